// What is fuzzed: code that takes bytes of strangers and needs neither Windows nor a server. Each target takes any
// bytes and ends the program when a promise is broken; nothing else is to be learned from it.
#pragma once

#include <cstddef>
#include <cstdint>

using Target = void(const std::uint8_t* data, std::size_t size);

// Of the library.
Target fuzzBuffers;      // requests being built, replies being read
Target fuzzFilters;      // the trace's filter lists
Target fuzzCommandLine;  // parameters and languages of a command line
Target fuzzLists;        // lists of texts, key paths
Target fuzzNumbers;      // numbers, and values checked against descriptions

// Of the server.
Target fuzzRequests;     // frames and the fields of requests
Target fuzzServerTexts;  // registry paths of clients, numbers of the catalogue
