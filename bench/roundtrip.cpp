// One LogDeviceGetValue beside other ways to carry the same bytes to another process and back, in turns, so that all
// meet the same machine. Needs the configuration server and bench_peers; makes a logical device of its own and
// deletes it.
#include <windows.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "kxonlinx.h"
#include "kxovaapi.h"
#include "peers/client.h"
#include "peers/peers.h"
#include "support/measure.h"
#include "support/options.h"
#include "support/requests.h"
#include "support/table.h"
#include "wire/frame.h"
#include "wire/opcodes.h"

namespace {

using peers::Peer;

constexpr char device[] = "kxova bench device";
constexpr char definition[] = "NX3110.MPI";
constexpr char parameter[] = "a parameter of some bench";
constexpr std::size_t valueLength = 68;
constexpr int turns = 150;
constexpr int asksInATurn = 20;
constexpr int countedAsks = 200;

const std::string wholeCall = "LogDeviceGetValue";
const std::string channelSame = "its bytes by SCP_send_receive";
const std::string channelCheap = "bare channel: SCP_send_receive, LogNameExists";
const std::string registryValue = "registry value: key opened, read, closed";
const std::string registryOpen = "registry value: read, the key is open";
const std::string mutexPair = "mutex locked and unlocked";
const std::string nothing = "nothing (the clock, taken off above)";

// Frames as the library makes them, built by hand.
class Frame
{
 public:
    explicit Frame(std::uint16_t code) : bytes(wire::frameHeaderLength, 0)
    {
        number(code, 2);
        at(wire::header::lengthOffset, wire::frameHeaderLength, 1);
        at(wire::header::magicOffset, wire::header::magic, 2);
        at(wire::header::versionOffset, wire::header::version, 1);
        at(wire::header::opcodeOffset, code, 2);
        at(wire::header::kindOffset, wire::header::kind, 1);
        at(wire::header::maskOffset, wire::header::mask, 2);
        at(wire::header::maxPayloadOffset, wire::maxPayload, 2);
        at(wire::header::payloadStartOffset, wire::frameHeaderLength, 2);
    }
    Frame& number(std::uint32_t value, std::size_t width = 4)
    {
        bytes.resize(bytes.size() + width);
        at(bytes.size() - width, value, width);
        at(wire::header::payloadLengthOffset, static_cast<std::uint32_t>(bytes.size() - wire::frameHeaderLength), 2);
        return *this;
    }
    Frame& text(const std::string& characters)
    {
        number(static_cast<std::uint32_t>(2 * characters.size()));
        for (const char character : characters)
            number(static_cast<unsigned char>(character), 2);
        return *this;
    }

    std::vector<std::uint8_t> bytes;

 private:
    void at(std::size_t offset, std::uint32_t value, std::size_t width)
    {
        for (std::size_t i = 0; i < width; ++i)
            bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
};

// A frame sent over a channel of this program's own.
class Channel
{
 public:
    explicit Channel(const Frame& frame) : handle_(SCP_openW(wire::channelName)), frame_(frame.bytes) {}

    bool ask()
    {
        replyLength = sizeof reply_;
        return SCP_send_receive(handle_, static_cast<unsigned short>(frame_.size()), frame_.data(), sizeof reply_,
                                reply_, &replyLength) == 0;
    }
    std::size_t requestLength() const noexcept { return frame_.size(); }

    unsigned short replyLength = 0;

 private:
    int handle_;
    std::vector<std::uint8_t> frame_;
    std::uint8_t reply_[wire::replyFrameCapacity] = {};
};

// A value as long as the one of the logical device, in a key of this program's own.
class RegistryValue
{
 public:
    explicit RegistryValue(const std::string& text)
    {
        RegCreateKeyExA(HKEY_CURRENT_USER, keyName, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key_,
                        nullptr);
        RegSetValueExA(key_, parameter, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
    }
    ~RegistryValue()
    {
        RegCloseKey(key_);
        RegDeleteKeyA(HKEY_CURRENT_USER, keyName);
    }
    RegistryValue(const RegistryValue&) = delete;
    RegistryValue& operator=(const RegistryValue&) = delete;

    bool ask() const { return read(key_); }
    bool openAndAsk() const
    {
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, keyName, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
        const bool done = read(key);
        RegCloseKey(key);
        return done;
    }

 private:
    static bool read(HKEY key)
    {
        BYTE value[260];
        DWORD length = sizeof value;
        return RegQueryValueExA(key, parameter, nullptr, nullptr, value, &length) == ERROR_SUCCESS;
    }

    static constexpr char keyName[] = "Software\\kxova bench";
    HKEY key_ = nullptr;
};

bool askLibrary()
{
    char value[260];
    unsigned long length = sizeof value;
    return LogDeviceGetValue(device, parameter, value, &length) == 0;
}

bool pairOf(HANDLE mutex)
{
    return WaitForSingleObject(mutex, INFINITE) == WAIT_OBJECT_0 && ReleaseMutex(mutex);
}

struct Row
{
    std::string name;
    Series series;
    std::optional<double> requests;
    std::vector<double> net;  // of each turn, the median without the clock

    double median() const { return Series{net}.median(); }
};

double ratio(const Row& row, const Row& to)
{
    return inMostTurns(row.net.size(), [&](std::size_t turn) { return row.net[turn] / to.net[turn]; });
}

std::vector<Row> time(const std::vector<Peer>& peers, int rounds)
{
    std::vector<Row> rows;
    for (const Peer& peer : peers)
        rows.push_back({peer.name, {}, {}, {}});
    for (int turn = 0; turn < rounds; ++turn) {
        for (std::size_t i = 0; i < peers.size(); ++i) {
            peers[i].ask();  // wakes the other side
            Series asked;
            for (int ask = 0; ask < asksInATurn; ++ask)
                asked.measure([&] { peers[i].ask(); });
            rows[i].net.push_back(asked.median());
            std::vector<double>& all = rows[i].series.times;
            all.insert(all.end(), asked.times.begin(), asked.times.end());
        }
    }
    const std::vector<double> clock = rows.back().net;
    for (Row& row : rows)
        for (std::size_t turn = 0; row.name != nothing && turn < clock.size(); ++turn)
            row.net[turn] -= clock[turn];
    return rows;
}

Row* find(std::vector<Row>& rows, const std::string& name)
{
    for (Row& row : rows)
        if (row.name == name) return &row;
    return nullptr;
}

std::vector<Goal> goals(std::vector<Row>& rows)
{
    std::vector<Goal> goals;
    Row& whole = *find(rows, wholeCall);
    Row& bare = *find(rows, channelCheap);
    const auto beside = [&](const std::string& name, double atMost) {
        if (Row* const peer = find(rows, name))
            goals.push_back({"the call to: " + name, ratio(whole, *peer), atMost});
    };
    beside(peers::messagePipe, 0.30);
    beside(peers::localRpc, 0.15);
    beside(registryValue, 1.1);
    const Row& pair = *find(rows, mutexPair);
    goals.push_back(
        {"above the bare channel, in mutex pairs",
         inMostTurns(whole.net.size(),
                     [&](std::size_t turn) { return (whole.net[turn] - bare.net[turn]) / pair.net[turn]; }),
         1.5});
    // The server's own look at its store, once a while, is no part of the call.
    if (whole.requests && bare.requests)
        goals.push_back({"requests above the bare channel's", std::round(*whole.requests - *bare.requests), 2});
    return goals;
}

Json print(std::vector<Row>& rows)
{
    Json json = Json::array();
    const Row* const pipe = find(rows, peers::messagePipe);
    std::printf("  %-48s %10s %10s %10s %9s %9s\n", "", "median", "p10", "p90", "to pipe", "requests");
    for (Row& row : rows) {
        const double toPipe = pipe ? ratio(row, *pipe) : 0;
        std::printf("  %-48s %7.2f us %7.2f us %7.2f us %9.3f %9s\n", row.name.c_str(), row.median(),
                    row.series.at(0.1), row.series.at(0.9), toPipe, orDash(row.requests, 1).c_str());
        json.push_back({{"name", row.name},
                        {"median_us", row.median()},
                        {"p10_us", row.series.at(0.1)},
                        {"p90_us", row.series.at(0.9)},
                        {"to_message_pipe", toPipe}});
        if (row.requests) json.back()["requests"] = *row.requests;
    }
    return json;
}

bool usable(std::vector<Peer>& peers)
{
    for (const Peer& peer : peers) {
        if (peer.ask()) continue;
        std::printf("bench: \"%s\" does not answer\n", peer.name.c_str());
        return false;
    }
    return true;
}

int count(const Options& options, const std::vector<Peer>& peers)
{
    Requests requests(options.log);
    Requests::Table table;
    for (const Peer& peer : peers)
        table[peer.name] = requests.each(countedAsks, [&] { peer.ask(); });
    Requests::save(options.requests, table);
    return 0;
}

int run(const Options& options)
{
    const std::string text(valueLength, 'v');
    LogDeviceSetValue(device, parameter, text.c_str());
    Channel same(Frame(wire::opcode::LogDeviceGetValue).text(device).text(parameter).number(260));
    // As long as the other, and nothing to look for: what is left is the channel.
    Channel cheap(Frame(wire::opcode::LogNameExists).text(std::string(45, 'n')).number(0));
    const RegistryValue registry(text);
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, nullptr);

    std::vector<Peer> peers = {
        {wholeCall, askLibrary},
        {channelSame, [&] { return same.ask(); }},
        {channelCheap, [&] { return cheap.ask(); }},
    };
    for (Peer& peer : peers::connectPeers())
        peers.push_back(std::move(peer));
    peers.push_back({registryValue, [&] { return registry.openAndAsk(); }});
    peers.push_back({registryOpen, [&] { return registry.ask(); }});
    peers.push_back({mutexPair, [&] { return pairOf(mutex); }});
    peers.push_back({nothing, [] { return true; }});
    if (!usable(peers)) return 1;
    if (same.requestLength() != peers::requestBytes || same.replyLength != peers::replyBytes)
        std::printf("bench: the call has %zu bytes out and %u back, its peers %zu and %zu\n", same.requestLength(),
                    same.replyLength, peers::requestBytes, peers::replyBytes);
    if (options.counts()) return count(options, peers);

    std::vector<Row> rows = time(peers, options.rounds ? options.rounds : turns);
    const Requests::Table requests = Requests::load(options.requests);
    for (Row& row : rows)
        row.requests = Requests::find(requests, row.name);
    std::printf("round trip, %zu bytes out and %zu back, 32-bit client, 64-bit server, %d each in turns\n",
                peers::requestBytes, peers::replyBytes, static_cast<int>(rows[0].series.times.size()));
    Json json = {{"bench", "roundtrip"}, {"rows", print(rows)}, {"goals", printGoals(goals(rows))}};
    saveJson(options.json, json);
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    LogDeviceDel(device);
    if (const long result = LogDeviceCreateFromDef(device, definition); result != 0) {
        std::printf("bench: the configuration server is needed; start it with kxovasrvx run (result %ld)\n", result);
        return 1;
    }
    const int status = run(Options(argumentCount, arguments));
    LogDeviceDel(device);
    return status;
}
