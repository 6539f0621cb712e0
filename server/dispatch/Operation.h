// What an operation is: its code, its name, the fields that it takes, and the function that carries it out.
//
// A handler is an ordinary function whose parameters are the request's fields in their order. How they are read, that
// they are all there and nothing behind them, and how they look in the log is derived from the parameters' types.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>

#include "catalogue/Catalogue.h"
#include "dispatch/Session.h"
#include "hardware/Machine.h"
#include "keys/Keys.h"
#include "store/Settings.h"
#include "store/Store.h"
#include "wire/opcodes.h"
#include "wire/ReplyWriter.h"
#include "wire/RequestReader.h"

namespace srv {

class Notifications;

// What handlers work on.
struct Context
{
    Store& store;
    const catalogue::Catalogue& catalogue;
    Log& log;
    Settings& settings;
    Machine& machine;
    Keys& keys;
    Notifications* notifications = nullptr;  // without them their operations are not supported
};

// One request under way.
struct Call
{
    const Context& server;
    Session& session;
    ReplyWriter& reply;

    Store& store() const noexcept { return server.store; }
};

// The kinds of fields, beside u32 and a text that may be NULL (Text).

// A text that must be there and not be empty: without it the result is 87.
struct Required
{
    std::wstring_view text;
    operator std::wstring_view() const noexcept { return text; }
};

// A text that must be there but may be empty.
struct Given
{
    std::wstring_view text;
    operator std::wstring_view() const noexcept { return text; }
};

// How many bytes of the ANSI code page the client has room for, terminator included.
struct Capacity
{
    std::uint32_t bytes = 0;
};

// A u32 whose value means nothing.
struct Ignored
{
};

enum class Fields { Good, Missing, Malformed };

// Reads one field. `shown` gets its text for the log if it is not nullptr.
Fields read(RequestReader& reader, Text& field, std::string* shown);
Fields read(RequestReader& reader, Required& field, std::string* shown);
Fields read(RequestReader& reader, Given& field, std::string* shown);
Fields read(RequestReader& reader, std::uint32_t& field, std::string* shown);
Fields read(RequestReader& reader, Capacity& field, std::string* shown);
Fields read(RequestReader& reader, Ignored& field, std::string* shown);

struct Outcome
{
    Fields fields = Fields::Good;
    Result result = result::ok;
};

// What it takes to answer: memory and nothing that may keep one waiting, or also the registry, other processes, the log.
enum class Work { InMemory, Outside };

struct Operation
{
    ::wire::opcode::Code opcode;
    const char* name;
    Via via;
    Outcome (*run)(const Call& call, RequestReader& reader, std::string* shown);
    Work work = Work::Outside;
};

namespace detail {

inline void worse(Fields& all, Fields one) noexcept
{
    if (one > all) all = one;
}

template <typename... Parameters, std::size_t... Index>
Outcome invoke(Result (*handler)(const Call&, Parameters...), const Call& call, RequestReader& reader,
               [[maybe_unused]] std::string* shown, std::index_sequence<Index...>)
{
    std::tuple<Parameters...> fields;
    Fields all = Fields::Good;
    (worse(all, read(reader, std::get<Index>(fields), shown)), ...);
    if (!reader.atEnd()) all = Fields::Malformed;
    if (all != Fields::Good) return {all, result::invalidParameter};
    return {all, handler(call, std::get<Index>(fields)...)};
}

template <typename... Parameters>
Outcome invoke(Result (*handler)(const Call&, Parameters...), const Call& call, RequestReader& reader,
               std::string* shown)
{
    return invoke(handler, call, reader, shown, std::index_sequence_for<Parameters...>{});
}

}  // namespace detail

// The function of an operation that a handler carries out.
template <auto handler>
Outcome handledBy(const Call& call, RequestReader& reader, std::string* shown)
{
    return detail::invoke(handler, call, reader, shown);
}

}  // namespace srv
