// Workers that do one thing over and over whenever they are told to, in processes of their own, and how often they do
// it together. A program that has a crew is its workers' program too: it hands their arguments to workAs().
#pragma once

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "support/measure.h"
#include "support/process.h"

namespace crew {

inline constexpr int most = 48;

struct Worker
{
    volatile LONG working;
    volatile LONG done;
};

// What the processes share.
struct Board
{
    HANDLE ready = CreateSemaphoreA(nullptr, 0, most, "kxova bench ready");
    HANDLE section = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, most * sizeof(Worker),
                                        "kxova bench workers");
    Worker* worker = static_cast<Worker*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0));
    HANDLE go[most];

    Board()
    {
        for (int i = 0; i < most; ++i)
            go[i] = CreateEventA(nullptr, FALSE, FALSE, ("kxova bench go " + std::to_string(i)).c_str());
    }
};

template <typename Work>
void workFor(const Board& board, int index, Work work)
{
    Worker& mine = board.worker[index];
    work();
    ReleaseSemaphore(board.ready, 1, nullptr);
    for (;;) {
        WaitForSingleObject(board.go[index], INFINITE);
        for (LONG done = mine.done; mine.working && work();)
            mine.done = ++done;
    }
}

inline bool isWorker(int count, char** arguments)
{
    return count >= 4 && std::strcmp(arguments[1], "workers") == 0;
}

// A worker's main program, which works until it is ended. arguments: "workers" FIRST COUNT ...
template <typename Work>
int workAs(char** arguments, Work work)
{
    const Board board;
    const int first = std::atoi(arguments[2]);
    const int count = std::atoi(arguments[3]);
    std::vector<std::thread> others;
    for (int i = 1; i < count; ++i)
        others.emplace_back([&board, first, i, work] { workFor(board, first + i, work); });
    workFor(board, first, work);
    return 0;
}

class Crew
{
 public:
    // One more process; false if it does not come to work. Workers count from 0 in the order of their adding.
    bool add(int threads = 1, const std::string& arguments = {})
    {
        process_.emplace_back("workers " + std::to_string(size_) + ' ' + std::to_string(threads) + ' ' + arguments);
        size_ += threads;
        for (int i = 0; i < threads; ++i)
            if (WaitForSingleObject(board_.ready, 60'000) != WAIT_OBJECT_0) return false;
        return true;
    }

    // How often a second these workers do it, together.
    double perSecond(int first, int count)
    {
        constexpr DWORD window = 120;
        for (int i = first; i < first + count; ++i)
            set(i, true);
        Sleep(settle);
        LONG done = -sum(first, count);
        const double time = microsecondsOf([] { Sleep(window); });
        done += sum(first, count);
        for (int i = first; i < first + count; ++i)
            set(i, false);
        Sleep(settle);
        return done * 1e6 / time;
    }

    // Stops a process of one worker while it works.
    void stall(int index)
    {
        set(index, true);
        Sleep(settle);
        process_[static_cast<std::size_t>(index)].suspend();
    }
    void wake(int index)
    {
        process_[static_cast<std::size_t>(index)].resume();
        set(index, false);
        Sleep(settle);
    }

 private:
    static constexpr DWORD settle = 20;  // milliseconds until all have heard it

    void set(int index, bool working)
    {
        board_.worker[index].working = working;
        if (working) SetEvent(board_.go[index]);
    }
    LONG sum(int first, int count) const
    {
        LONG done = 0;
        for (int i = first; i < first + count; ++i)
            done += board_.worker[i].done;
        return done;
    }

    Board board_;
    std::vector<OtherProcess> process_;
    int size_ = 0;
};

}  // namespace crew
