// Encoding a request and decoding a reply with the library's own message buffers, beside well-known encodings of the
// same message: all natively built with the same compiler and options, in turns. encoding [FILE.json]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <vector>

#include "texts.h"

namespace {

constexpr int turns = 200;
constexpr int inATurn = 500;

template <typename Work>
double nanoseconds(const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < inATurn; ++i)
        work();
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
    return time.count() / inATurn;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::vector<Encoding> encodings()
{
    return
    {
        buffersEncoding(),
#if KXOVA_BENCH_FLATBUFFERS
            flatBuffersEncoding(),
#endif
#if KXOVA_BENCH_PROTOBUF
            protocolBuffersEncoding(),
#endif
    };
}

}  // namespace

int main(int count, char** arguments)
{
    const std::vector<Encoding> all = encodings();
    std::vector<std::vector<double>> encode(all.size());
    std::vector<std::vector<double>> decode(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].decodeReply() == texts::value.size() + texts::unit.size() && all[i].encodeRequest() != 0) continue;
        std::printf("bench: %s does not carry the message\n", all[i].name.c_str());
        return 1;
    }
    for (int turn = 0; turn < turns; ++turn) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            encode[i].push_back(nanoseconds(all[i].encodeRequest));
            decode[i].push_back(nanoseconds(all[i].decodeReply));
        }
    }

    std::printf("encoding, three texts and a number out, a number and two texts back, medians\n");
    std::printf("  %-48s %14s %14s %14s\n", "", "encode request", "decode reply", "request bytes");
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::printf("  %-48s %11.0f ns %11.0f ns %14zu\n", all[i].name.c_str(), median(encode[i]), median(decode[i]),
                    all[i].encodeRequest());
        rows.push_back({{"name", all[i].name},
                        {"encode_ns", median(encode[i])},
                        {"decode_ns", median(decode[i])},
                        {"request_bytes", all[i].encodeRequest()}});
    }
    if (count > 1)
        std::ofstream(arguments[1]) << nlohmann::ordered_json({{"bench", "encoding"}, {"rows", rows}}).dump(2)
                                    << '\n';
    return 0;
}
