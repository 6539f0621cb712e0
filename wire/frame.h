// The block that carries one message over the channel: an 80-byte header, then the payload. All numbers are
// little-endian; header bytes that are not named here are 0.
//
//   offset  width  content
//   4       u8     80, the header's length
//   5       u16    123
//   7       u8     2
//   8       u16    operation code, a copy of the payload's first two bytes
//   11      u8     2
//   14      u16    255
//   16      u16    payload length
//   19      u16    8192, the largest payload
//   21      u16    80
//   80      …      payload
//
// A reply has the same header, with the operation code of its request.
#pragma once

#include <cstddef>
#include <cstdint>

namespace wire {

inline constexpr std::size_t maxPayload = 8192;
inline constexpr std::size_t frameHeaderLength = 80;
inline constexpr std::size_t requestFrameCapacity = 8284;
inline constexpr std::size_t replyFrameCapacity = frameHeaderLength + maxPayload;

namespace header {
inline constexpr std::size_t lengthOffset = 4;
inline constexpr std::size_t magicOffset = 5;
inline constexpr std::uint16_t magic = 123;
inline constexpr std::size_t versionOffset = 7;
inline constexpr std::uint8_t version = 2;
inline constexpr std::size_t opcodeOffset = 8;
inline constexpr std::size_t kindOffset = 11;
inline constexpr std::uint8_t kind = 2;
inline constexpr std::size_t maskOffset = 14;
inline constexpr std::uint16_t mask = 255;
inline constexpr std::size_t payloadLengthOffset = 16;
inline constexpr std::size_t maxPayloadOffset = 19;
inline constexpr std::size_t payloadStartOffset = 21;
}  // namespace header

inline constexpr std::uint16_t resultReply = 4;        // kind of the ordinary reply: u32 result, then payload
inline constexpr std::uint32_t nullString = 0xFFFF;    // length field that stands for a NULL request string
inline constexpr std::size_t stringTrailerLength = 4;  // behind each reply string; readers skip it

inline constexpr wchar_t channelName[] = L"KXOVASCP";
inline constexpr char serverPipeName[] = R"(\\.\pipe\KxOvaSRVPIPE64)";
inline constexpr char serverStartEventName[] = "_KxOvaSRVStartSRVEvent";

}  // namespace wire
