// A channel library that answers from a script and remembers what it was sent.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

class FakeChannel
{
 public:
    virtual ~FakeChannel() = default;

    // Forgets script and history; the channel opens again.
    virtual void reset() = 0;

    // Each scripted answer serves one request, in order; a request without one gets the default answer.
    virtual void answer(const Bytes& payload) = 0;  // a reply frame with this payload
    virtual void answerFrame(const Bytes& wholeFrame, std::uint16_t reportedLength) = 0;
    virtual void fail(int errorNumber) = 0;                                            // the exchange fails
    virtual void answerAll(std::function<Bytes(const Bytes& request)> responder) = 0;  // the default answer

    // One exchange as the library sees it: it fails, or yields a frame and a length, which need not fit together.
    struct Exchange
    {
        int errorNumber = 0;
        Bytes frame;
        std::uint16_t length = 0;
    };
    // Every exchange from now on; the channel remembers none of them.
    virtual void exchangeAll(std::function<Exchange(const Bytes& request)> responder) = 0;

    // -1 makes SCP_openW fail; handles count up otherwise.
    virtual void openFails(bool fails) = 0;
    // Runs inside SCP_openW before it returns.
    virtual void onOpen(std::function<void()> action) = 0;

    virtual const std::vector<Bytes>& requests() const = 0;  // payloads, without their frame headers
    virtual const std::vector<Bytes>& frames() const = 0;    // whole frames
    virtual const std::vector<std::wstring>& opened() const = 0;
    virtual const std::vector<int>& closed() const = 0;
    virtual HWND notificationWindow() const = 0;
    virtual UINT notificationMessage() const = 0;
    virtual void notificationResult(int result) = 0;
};

#if defined(fake_channel_EXPORTS)
extern "C" __declspec(dllexport) FakeChannel* fakeChannel();
#else
extern "C" __declspec(dllimport) FakeChannel* fakeChannel();
#endif
