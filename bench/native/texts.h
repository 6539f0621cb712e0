// The message that all encodings carry: three texts and a number out, a number and two texts back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace texts {

inline constexpr char device[] = "kxova bench device";
inline constexpr char parameter[] = "a parameter of some bench";
inline constexpr char language[] = "EN";
inline constexpr std::uint32_t capacity = 260;
inline const std::string value(60, 'v');
inline const std::string unit(8, 'u');

}  // namespace texts

// One encoding. Each step leaves its result where nothing can be optimised away, and says how long it is.
struct Encoding
{
    std::string name;
    std::function<std::size_t()> encodeRequest;  // the bytes of the request
    std::function<std::size_t()> decodeReply;    // the characters of both texts, copied into buffers of a caller
};

Encoding buffersEncoding();
Encoding flatBuffersEncoding();
Encoding protocolBuffersEncoding();
