// Resuming from sleep with a list of events, which nothing in the library makes: the event window alone, on this
// thread's side of the interface.

#include <gtest/gtest.h>

#include "channel/eventWindow.h"
#include "channel/ovaScpLock.h"
#include "traceCapture.h"

namespace {

constexpr char procedure[] = "EventWindow";

struct Resume : testing::Test
{
    void SetUp() override
    {
        {
            const OvaScpLockGuard lock;
            eventWindow::CreateMsgThread();
        }
        for (const DWORD start = GetTickCount(); !eventWindow::handle() && GetTickCount() - start < 20'000;)
            Sleep(1);
        ASSERT_NE(eventWindow::handle(), nullptr);
    }
    void TearDown() override
    {
        eventWindow::releaseBuffer("test");
        eventWindow::close("test");
        eventWindow::closeEvents();
        eventWindow::buffer().reset();
    }
    static void resume() { SendMessageA(eventWindow::handle(), WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0); }
};

TEST_F(Resume, SetsEveryListedEventOnceAndEmptiesTheList)
{
    const HANDLE first = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const HANDLE second = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    eventWindow::buffer() = std::make_unique<std::list<HANDLE>>(std::list<HANDLE>{first, second});
    const TraceCapture capture("0x40");
    resume();
    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(eventWindow::buffer()->empty());
    const std::vector<TraceLine> lines = capture.of(procedure);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[1].text, "Resumed from sleep mode.");
    EXPECT_EQ(lines[2].text, "Set event after sleep mode");
    EXPECT_EQ(lines[3].text, "Set event after sleep mode");

    resume();
    EXPECT_EQ(WaitForSingleObject(first, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    CloseHandle(first);
    CloseHandle(second);
}

TEST_F(Resume, EmptyList_isReleasedAtTheEnd)
{
    eventWindow::buffer() = std::make_unique<std::list<HANDLE>>();
    const TraceCapture capture("0x10");
    eventWindow::releaseBuffer("test");
    EXPECT_FALSE(eventWindow::buffer());
    EXPECT_EQ(capture.of("test"), (std::vector<TraceLine>{{"FR", "test", "deleting event buffer"}}));
}

TEST_F(Resume, ListWithEvents_isKeptAtTheEnd)
{
    eventWindow::buffer() = std::make_unique<std::list<HANDLE>>(std::list<HANDLE>{nullptr});
    eventWindow::releaseBuffer("test");
    EXPECT_TRUE(eventWindow::buffer());
}

}  // namespace
