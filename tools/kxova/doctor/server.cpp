#include <windows.h>

#include "calls.h"
#include "doctor/finding.h"
#include "output.h"
#include "platform/support/win_handle.h"

namespace {

constexpr char logRemedy[] = "look into the server's log; \"kxovasrvx run --log-level debug\" shows each request";

std::string resultText(long result)
{
    const Failure failure("", result);
    return failure.resultName() + ", " + std::to_string(result);
}

Finding channel()
{
    Text name;
    const long result = LogDeviceGetEnum(nullptr, 0, name.buffer, &name.length);
    const bool good = result == ERROR_SUCCESS || result == DCFG_ERR_NO_MORE_ITEMS;
    return {good ? Verdict::Good : Verdict::Bad, "channel",
            good ? "answers" : "does not answer (" + resultText(result) + ")", logRemedy};
}

Finding pipe()
{
    Text name;
    const long result = KxRegEnumKey(R"(SOFTWARE\TAVRONE\NORIX\DefDevices)", 0, name.buffer, &name.length);
    const bool good = result == ERROR_SUCCESS || result == DCFG_ERR_NO_MORE_ITEMS;
    return {good ? Verdict::Good : Verdict::Bad, "registry pipe",
            good ? "answers" : "does not answer (" + resultText(result) + ")", logRemedy};
}

// How many items an enumeration has; `result` is what ended it.
template <typename Ask>
long countOf(Ask ask, long& result)
{
    for (unsigned long i = 0;; ++i) {
        Text name;
        result = ask(i, name.buffer, &name.length);
        if (result != ERROR_SUCCESS) return static_cast<long>(i);
    }
}

Finding store()
{
    long devicesEnd = 0;
    long namesEnd = 0;
    const long devices = countOf([](auto... out) { return LogDeviceGetEnum(nullptr, out...); }, devicesEnd);
    const long names = countOf([](auto... out) { return LogNameGetEnum(out...); }, namesEnd);
    for (const long end : {devicesEnd, namesEnd})
        if (end != DCFG_ERR_NO_MORE_ITEMS) return {Verdict::Bad, "store", resultText(end), logRemedy};
    return {Verdict::Good, "store",
            counted(static_cast<std::size_t>(devices), "logical device") + ", " +
                counted(static_cast<std::size_t>(names), "logical name"),
            ""};
}

Finding plausibility()
{
    const long result = Ova_Plausibilitaet();
    if (result == ERROR_SUCCESS) return {Verdict::Good, "plausibility", "the configuration is consistent", ""};
    return {Verdict::Note, "plausibility", "the configuration is not consistent (" + resultText(result) + ")",
            "the server's log names each disagreement"};
}

Finding notifications()
{
    constexpr DWORD bound = 5'000;
    LogDeviceExists("Dummy", 0);  // starts the window that notifications need
    HANDLE event = nullptr;
    const std::string name = "kxova doctor " + std::to_string(GetCurrentProcessId());
    unsigned long result = 0;
    for (const DWORD start = GetTickCount();; Sleep(10)) {
        result = LogDeviceNotifyChange(nullptr, 0, 0, name.c_str(), &event, &event);
        if (result == ERROR_SUCCESS || GetTickCount() - start > bound) break;
        if (event) CloseHandle(event);
        event = nullptr;
    }
    if (result == ERROR_SUCCESS) result = LogDeviceUnregisterNotifyChange(nullptr, name.c_str(), &event);
    if (event) CloseHandle(event);
    if (result == ERROR_SUCCESS) return {Verdict::Good, "notifications", "can be registered", ""};
    return {Verdict::Bad, "notifications", resultText(static_cast<long>(result)), logRemedy};
}

struct Question
{
    Finding (*ask)();
    Finding answer;
};

DWORD WINAPI askThread(void* argument)
{
    auto& question = *static_cast<Question*>(argument);
    question.answer = question.ask();
    return 0;
}

// A server that hangs answers nothing on its pipe, and the wait for that has no bound of its own.
Finding bounded(Finding (*ask)(), const std::string& what)
{
    constexpr DWORD bound = 5'000;
    auto question = std::make_unique<Question>(Question{ask, {}});
    const platform::KernelObject thread(CreateThread(nullptr, 0, askThread, question.get(), 0, nullptr));
    if (thread && WaitForSingleObject(thread.get(), bound) == WAIT_OBJECT_0) return question->answer;
    static_cast<void>(question.release());  // still the thread's
    return {Verdict::Bad, what, "does not answer within 5 seconds", logRemedy};
}

}  // namespace

Findings examineServer()
{
    if (!serverIsRunning()) return {{Verdict::Bad, "server", "is not running", "start it with \"kxovasrvx run\""}};
    Findings findings = {{Verdict::Good, "server", "is running", ""}, channel(), bounded(pipe, "registry pipe")};
    const bool answers = findings[1].verdict == Verdict::Good;
    const auto add = [&](const char* what, Finding (*ask)()) {
        findings.push_back(answers ? ask()
                                   : Finding{Verdict::Note, what, "not examined: the server does not answer", ""});
    };
    add("store", store);
    add("plausibility", plausibility);
    add("notifications", notifications);
    return findings;
}
