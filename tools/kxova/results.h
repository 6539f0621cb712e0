// What a result code means to a person, and the exit status it leads to.
#pragma once

#include <stdexcept>
#include <string>

// Exit statuses; scripts rely on them.
enum ExitStatus : int {
    exitOk = 0,
    exitFailed = 1,    // anything that has no status of its own
    exitUsage = 2,     // the command line is wrong
    exitNoServer = 3,  // the configuration server is not running
    exitNotFound = 4,  // the thing that was named does not exist
    exitNoAnswer = 5,  // the configuration server is running but does not answer
    exitRefused = 6,   // the server or a rule refused what was asked
};

// A call that failed: what was asked, the result, and perhaps the next step.
class Failure : public std::runtime_error
{
 public:
    Failure(const std::string& attempt, long result, const std::string& hintWhenNotFound = {});

    const std::string& hint() const noexcept { return hint_; }
    // Puts a sentence before the hint.
    void advise(const std::string& sentence) { hint_ = hint_.empty() ? sentence : sentence + "; " + hint_; }
    const std::string& resultName() const noexcept { return name_; }
    long result() const noexcept { return result_; }
    int status() const noexcept { return status_; }

 private:
    struct Explanation;
    Failure(const std::string& attempt, long result, const Explanation& explanation);
    static Explanation explain(long result);

    std::string name_;
    std::string hint_;
    long result_;
    int status_;
};

// Windows' own words for its error numbers, without the line end and full stop.
std::string windowsText(long result);

// An open channel pipe means that a server is there, whatever it answers.
bool serverIsRunning();

// Throws a Failure unless the result is 0. `attempt` completes "cannot …"; the hint is the next step for somebody who
// named something that does not exist.
void require(long result, const std::string& attempt, const std::string& hintWhenNotFound = {});
