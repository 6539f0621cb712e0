#include "fakeChannel.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <string>

namespace {

constexpr std::size_t headerLength = 80;

using Answer = FakeChannel::Exchange;

class ScriptedChannel final : public FakeChannel
{
 public:
    void reset() override
    {
        const std::lock_guard guard(mutex_);
        script_.clear();
        responder_ = nullptr;
        exchangeResponder_ = nullptr;
        onOpen_ = nullptr;
        openFails_ = false;
        requests_.clear();
        frames_.clear();
        opened_.clear();
        closed_.clear();
        notificationResult_ = 0;
    }
    void answer(const Bytes& payload) override
    {
        const std::lock_guard guard(mutex_);
        script_.push_back(framed(payload));
    }
    void answerFrame(const Bytes& wholeFrame, std::uint16_t reportedLength) override
    {
        const std::lock_guard guard(mutex_);
        script_.push_back({0, wholeFrame, reportedLength});
    }
    void fail(int errorNumber) override
    {
        const std::lock_guard guard(mutex_);
        script_.push_back({errorNumber, {}, 0});
    }
    void answerAll(std::function<Bytes(const Bytes&)> responder) override { responder_ = std::move(responder); }
    void exchangeAll(std::function<Exchange(const Bytes&)> responder) override
    {
        exchangeResponder_ = std::move(responder);
    }
    void openFails(bool fails) override { openFails_ = fails; }
    void onOpen(std::function<void()> action) override { onOpen_ = std::move(action); }
    const std::vector<Bytes>& requests() const override { return requests_; }
    const std::vector<Bytes>& frames() const override { return frames_; }
    const std::vector<std::wstring>& opened() const override { return opened_; }
    const std::vector<int>& closed() const override { return closed_; }
    HWND notificationWindow() const override { return window_; }
    UINT notificationMessage() const override { return message_; }
    void notificationResult(int result) override { notificationResult_ = result; }

    int open(const wchar_t* name)
    {
        int handle = -1;
        {
            const std::lock_guard guard(mutex_);
            opened_.emplace_back(name);
            if (!openFails_) handle = nextHandle_++;
        }
        if (onOpen_) onOpen_();
        return handle;
    }
    int close(int handle)
    {
        const std::lock_guard guard(mutex_);
        closed_.push_back(handle);
        return 0;
    }
    int exchange(std::uint16_t frameLength, const std::uint8_t* frame, std::uint16_t capacity, std::uint8_t* reply,
                 std::uint16_t* replyLength)
    {
        Bytes request(frame + headerLength, frame + frameLength);
        if (exchangeResponder_) return hand(exchangeResponder_(request), capacity, reply, replyLength);
        Answer answer = framed({4, 0, 0, 0, 0, 0});  // unless scripted: result 0, nothing else
        std::function<Bytes(const Bytes&)> responder;
        {
            const std::lock_guard guard(mutex_);
            frames_.emplace_back(frame, frame + frameLength);
            requests_.push_back(request);
            if (!script_.empty()) {
                answer = script_.front();
                script_.pop_front();
            } else {
                responder = responder_;
            }
        }
        if (responder) answer = framed(responder(request));
        return hand(answer, capacity, reply, replyLength);
    }
    int errorNumber() const { return errorNumber_; }
    int notify(HWND window, UINT message)
    {
        window_ = window;
        message_ = message;
        return notificationResult_;
    }

 private:
    int hand(const Answer& answer, std::uint16_t capacity, std::uint8_t* reply, std::uint16_t* replyLength)
    {
        errorNumber_ = answer.errorNumber;
        if (answer.errorNumber != 0) return -1;
        std::copy_n(answer.frame.begin(), std::min<std::size_t>(answer.frame.size(), capacity), reply);
        *replyLength = answer.length;
        return 0;
    }
    static Answer framed(const Bytes& payload)
    {
        Bytes frame(headerLength, 0);
        frame.insert(frame.end(), payload.begin(), payload.end());
        const auto length = static_cast<std::uint16_t>(frame.size());
        return {0, std::move(frame), length};
    }

    std::recursive_mutex mutex_;
    std::deque<Answer> script_;
    std::function<Bytes(const Bytes&)> responder_;
    std::function<Exchange(const Bytes&)> exchangeResponder_;
    std::function<void()> onOpen_;
    bool openFails_ = false;
    int nextHandle_ = 7;
    int errorNumber_ = 0;
    int notificationResult_ = 0;
    HWND window_ = nullptr;
    UINT message_ = 0;
    std::vector<Bytes> requests_;
    std::vector<Bytes> frames_;
    std::vector<std::wstring> opened_;
    std::vector<int> closed_;
};

ScriptedChannel& channel()
{
    static ScriptedChannel instance;
    return instance;
}

}  // namespace

extern "C" {

FakeChannel* fakeChannel()
{
    return &channel();
}

__declspec(dllexport) int SCP_openW(const wchar_t* name)
{
    return channel().open(name);
}

__declspec(dllexport) int SCP_send_receive(int, unsigned short frameLength, void* frame, unsigned short capacity,
                                           void* reply, unsigned short* replyLength)
{
    return channel().exchange(frameLength, static_cast<const std::uint8_t*>(frame), capacity,
                              static_cast<std::uint8_t*>(reply), replyLength);
}

__declspec(dllexport) int SCP_get_errno(void)
{
    return channel().errorNumber();
}

__declspec(dllexport) int SCP_close(int handle)
{
    return channel().close(handle);
}

__declspec(dllexport) int SetNorixHWndMsg(int, HWND window, UINT message)
{
    return channel().notify(window, message);
}

__declspec(dllexport) int OnlDll_CheckDevOpen(void)
{
    return 1;
}

}  // extern "C"
