// The thread that looks for requests on behalf of all. Were each connection's thread to look at its own memory before it
// sleeps, they would take the processor from each other and from the one that works.
//
// Whoever wakes first looks at the memory of all connections that are awake. It answers what is answered at once, and
// calls the connection's own thread for what may take longer, so that nobody waits for another client's work.
#pragma once

#include <atomic>
#include <cstddef>
#include <vector>

#include "base/Lock.h"

namespace srv {

class Lookout
{
 public:
    // A connection, as the lookout deals with it: one thread at a time, but not always its own.
    class Place
    {
     public:
        virtual ~Place() = default;

     protected:
        // Whether there is a request that has not been taken.
        virtual bool asked() const noexcept = 0;
        // Takes it, and answers it if that takes no time; whether it has.
        virtual bool attend() noexcept = 0;
        // Whether the client has to wake the thread of this connection, because nobody looks.
        virtual void sleeps(bool) noexcept = 0;
        virtual void wake() noexcept = 0;

     private:
        friend Lookout;
        bool awake_ = false;
        bool called_ = false;  // its own thread is to answer what has been taken
        int looks_ = 0;        // since its last request
    };

    // For at most `most` places. After `longestWatch` requests another thread looks, if there is one whose client asks:
    // one that looks does not see that its own client has gone.
    explicit Lookout(std::size_t most, unsigned longestWatch = 10'000) : longestWatch_(longestWatch)
    {
        awake_.reserve(most);
    }

    // For the thread of `own`, whenever it wakes. True: a request has been taken for it to answer, and finish() to be
    // called after that. False: it may sleep, for somebody else looks, or nobody asks, or `stop` is set.
    bool look(Place& own, const std::atomic<bool>& stop) noexcept;
    void finish(Place& own) noexcept;

    // Nothing is looked for there any more. True: a request has been taken, and is to be answered still.
    bool leave(Place& own) noexcept;

 private:
    void rouse(Place& place) noexcept;
    unsigned lookAtAll(const Place& own) noexcept;
    bool dozes(Place& place) noexcept;
    void giveUp() noexcept;

    const unsigned longestWatch_;
    Lock lock_;
    bool looking_ = false;
    std::vector<Place*> awake_;
};

}  // namespace srv
