// One sound request of every operation and form, field by field, so that it can be damaged field by field too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Bytes.h"
#include "dispatch/Session.h"
#include "support/fuzzing.h"

struct Null
{
};

// A number, a text, no text, or bytes as they are.
using Field = std::variant<std::uint32_t, std::u16string, Null, bytes::Bytes>;

struct SoundRequest
{
    std::uint16_t opcode;
    srv::Via via;
    std::vector<Field> fields;
};

const std::vector<SoundRequest>& soundRequests();

bytes::Bytes payloadOf(const SoundRequest& request);

// The request with fields of another content, perhaps fewer or more of them, and perhaps damaged bytes.
bytes::Bytes damaged(SoundRequest request, fuzzing::Random& random);
