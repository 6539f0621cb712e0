// soak_writer NAME SECONDS: writes to a logical device of its own while servers come and go, and compares what they
// answer with what they have acknowledged. Says at its end how much that was; fails if anything was lost or changed.
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "kxovaapi.h"
#include "Ledger.h"
#include "support/fuzzing.h"

namespace {

constexpr std::uint32_t values = 40;
constexpr std::uint32_t devices = 4;
constexpr char definition[] = "NX3110.MPI";

class Writer
{
 public:
    Writer(std::string device, DWORD milliseconds)
        : device_(std::move(device)), end_(GetTickCount() + milliseconds), random_(GetCurrentProcessId())
    {}

    int run()
    {
        answered([this] { return LogDeviceDel(device_.c_str()); });
        answered([this] { return LogDeviceCreateFromDef(device_.c_str(), definition); });
        while (static_cast<LONG>(end_ - GetTickCount()) > 0) {
            step();
            if (random_.oneIn(256)) verify();
        }
        verify();
        clean();
        std::printf("figure: writers %lu rounds %llu bytes %lu unanswered %lu lost\n", writes_, bytes_, unanswered_,
                    lost_);
        return lost_ == 0 ? 0 : 1;
    }

 private:
    // Results of a server that has made up its mind.
    static bool isAnswer(long result) { return result == 0 || result == DCFG_ERR_NOT_FOUND || result == 183; }

    // Asks until somebody answers; a server that never comes back is told by the missing figures.
    template <typename Request>
    long answered(Request request)
    {
        constexpr DWORD patience = 60'000;
        for (const DWORD start = GetTickCount();;) {
            const long result = request();
            if (isAnswer(result)) return result;
            if (GetTickCount() - start > patience) {
                std::printf("no answer for a minute: result %ld\n", result);
                std::exit(3);
            }
            Sleep(20);
        }
    }

    std::string otherDevice(std::uint32_t number) const { return device_ + "-" + std::to_string(number); }

    void step()
    {
        if (random_.oneIn(24)) return otherDeviceStep();
        const std::string name = "value" + std::to_string(random_.below(values));
        if (random_.oneIn(8)) {
            note(name, {}, LogDeviceDelValue(device_.c_str(), name.c_str()));
        } else {
            const std::string text = std::to_string(++writes_) +
                                     " Gr\xF6\xDF"
                                     "e" +
                                     std::string(random_.below(200), 'x');
            note(name, text, LogDeviceSetValue(device_.c_str(), name.c_str(), text.c_str()));
        }
    }

    // A device that is there is told from one that is not: made and deleted whole.
    void otherDeviceStep()
    {
        const std::string name = otherDevice(random_.below(devices));
        ++writes_;
        if (random_.oneIn(2)) {
            note(name, "there", LogDeviceCreateFromDef(name.c_str(), definition));
        } else {
            note(name, {}, LogDeviceDel(name.c_str()));
        }
    }

    void note(const std::string& name, const Content& content, long result)
    {
        bytes_ += name.size() + (content ? content->size() : 0);
        if (isAnswer(result)) return ledger_.acknowledged(name, content);
        ledger_.unanswered(name, content);
        ++unanswered_;
        verify();
    }

    void verify()
    {
        ledger_.forEachName([this](const std::string& name) {
            const Content content = read(name);
            if (ledger_.found(name, content)) return;
            ++lost_;
            std::printf("LOST: %s of %s is \"%s\"\n", name.c_str(), device_.c_str(),
                        content ? content->c_str() : "nothing");
        });
    }

    Content read(const std::string& name)
    {
        if (name.starts_with(device_)) {
            const long result = answered([&] { return LogDeviceExists(name.c_str(), 0); });
            return result == 0 ? Content("there") : Content();
        }
        char text[260] = {};
        const long result = answered([&] {
            unsigned long length = sizeof text;
            return LogDeviceGetValue(device_.c_str(), name.c_str(), text, &length);
        });
        return result == 0 ? Content(text) : Content();
    }

    void clean()
    {
        for (std::uint32_t number = 0; number < devices; ++number)
            answered([&] { return LogDeviceDel(otherDevice(number).c_str()); });
        answered([this] { return LogDeviceDel(device_.c_str()); });
    }

    std::string device_;
    DWORD end_;
    fuzzing::Random random_;
    Ledger ledger_;
    unsigned long writes_ = 0;
    unsigned long long bytes_ = 0;
    unsigned long unanswered_ = 0;
    unsigned long lost_ = 0;
};

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::puts("usage: soak_writer NAME SECONDS");
        return 2;
    }
    return Writer(argv[1], 1000 * std::strtoul(argv[2], nullptr, 10)).run();
}
