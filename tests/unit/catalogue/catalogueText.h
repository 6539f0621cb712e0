// Small catalogues for tests, and what is expected of the errors in them.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "catalogue/load.h"

// The sections of a small catalogue without errors; a test exchanges the one that it is about.
struct CatalogueText
{
    std::string head = R"("format": 1, "runtimeVersions": ["1", "2", "3", "4", "5"])";
    std::string texts = R"({"rates": {"BaudrateResource": {"9600": {"DE": "9,6", "EN": "9.6"}}}})";
    std::string parameters = R"({"baudrate": {"type": "enum", "items": [9600, 19200]}})";
    std::string protocols = R"({"MPI": {"values": {"Alias": "Multi", "DescText": "multipoint"}}})";
    std::string boards = R"({"*TVRA001": {"values": {"BoardName": "NX 1", "Alias": "NX1", "Asic_Type": "none",
        "DescText": "a board", "BusType": "PCI"}, "maps": ["one", "two"]}})";
    std::string devices = R"({"NX1.MPI": {"board": "*TVRA001", "protocol": "MPI"}})";
    std::string more;  // further sections, each with a comma before it

    std::string text() const;
};

// A board or a protocol of which only what a test adds is of interest: members with a comma before each.
std::string board(const std::string& more);
std::string protocol(const std::string& more);

// The name under which a test's text is read.
inline constexpr std::wstring_view textName = L"test.json";

catalogue::LoadResult parseText(const std::string& text);

// The catalogue of a text without errors; fails the test and answers nullptr for another one.
std::shared_ptr<const catalogue::Catalogue> parseGood(const CatalogueText& text);

// Expects exactly one error: this sentence, at the place that "@@" marks in the text (which is taken out of it).
void expectError(std::string markedText, std::wstring_view sentence);
void expectError(const CatalogueText& markedText, std::wstring_view sentence);

// The sentences of all errors.
std::vector<std::wstring> sentences(const catalogue::LoadResult& result);
