// One LogDeviceGetValue beside a bare round trip of the same bytes over the same transport, in turns, so that both
// meet the same machine. Needs the configuration server; makes a logical device of its own and deletes it.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "kxonlinx.h"
#include "kxovaapi.h"
#include "measure.h"
#include "wire/frame.h"

namespace {

constexpr char device[] = "kxova bench";
constexpr char definition[] = "NX3110.MPI";
constexpr char parameter[] = "baudrate";
constexpr int rounds = 4000;
constexpr int warmUp = 200;

// The frame that the library sends for the same question, built by hand.
std::vector<unsigned char> bareRequest()
{
    std::vector<unsigned char> payload = {33, 0};
    const auto number = [&](std::uint32_t value) {
        for (int i = 0; i < 4; ++i)
            payload.push_back(static_cast<unsigned char>(value >> (8 * i)));
    };
    const auto text = [&](const char* characters) {
        number(static_cast<std::uint32_t>(2 * std::strlen(characters)));
        for (; *characters; ++characters)
            payload.insert(payload.end(), {static_cast<unsigned char>(*characters), 0});
    };
    text(device);
    text(parameter);
    number(260);

    std::vector<unsigned char> frame(wire::frameHeaderLength, 0);
    frame[4] = 80;
    frame[5] = 123;
    frame[7] = 2;
    frame[8] = 33;
    frame[11] = 2;
    frame[14] = 255;
    frame[16] = static_cast<unsigned char>(payload.size());
    frame[20] = 0x20;
    frame[21] = 80;
    frame.insert(frame.end(), payload.begin(), payload.end());
    return frame;
}

}  // namespace

int main()
{
    LogDeviceDel(device);
    if (const long result = LogDeviceCreateFromDef(device, definition); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    const int channel = SCP_openW(wire::channelName);
    std::vector<unsigned char> frame = bareRequest();
    static unsigned char reply[wire::replyFrameCapacity];

    Series call;
    Series bare;
    unsigned short replyLength = 0;
    for (int i = 0; i < rounds + warmUp; ++i) {
        char value[260];
        unsigned long length = sizeof value;
        call.measure([&] { LogDeviceGetValue(device, parameter, value, &length); });
        bare.measure([&] {
            replyLength = sizeof reply;
            SCP_send_receive(channel, static_cast<unsigned short>(frame.size()), frame.data(), sizeof reply, reply,
                             &replyLength);
        });
        if (i == warmUp) {
            call.times.clear();
            bare.times.clear();
        }
    }
    SCP_close(channel);
    LogDeviceDel(device);

    const double whole = call.at(0.5);
    const double transport = bare.at(0.5);
    std::printf("round trip, %zu bytes out and %u back, %d rounds in turns\n", frame.size(), replyLength, rounds);
    std::printf("  %-34s %9s %9s %9s\n", "", "median", "p10", "p90");
    std::printf("  %-34s %6.1f us %6.1f us %6.1f us\n", "LogDeviceGetValue", whole, call.at(0.1), call.at(0.9));
    std::printf("  %-34s %6.1f us %6.1f us %6.1f us\n", "same bytes over the channel", transport, bare.at(0.1),
                bare.at(0.9));
    std::printf("  %-34s %6.2f\n", "ratio of the medians", whole / transport);
    std::printf("{\"bench\":\"roundtrip\",\"call_us\":%.1f,\"bare_us\":%.1f,\"ratio\":%.3f}\n", whole, transport,
                whole / transport);
    return 0;
}
