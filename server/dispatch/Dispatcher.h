// Finds the operation that a request asks for, has it carried out, and answers in every case.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "dispatch/Operation.h"

namespace srv {

// Safe to use from any thread, for different sessions at once.
class Dispatcher
{
 public:
    Dispatcher(const Context& context, std::span<const Operation> operations);

    // Takes the payload of one request and writes the payload of its reply into `space`, of which the first part is
    // returned. Answers 8018 for an operation that does not exist (for this way in), and 87 for a request whose
    // fields are not those of its operation.
    std::span<const std::uint8_t> handle(Session& session, std::span<const std::uint8_t> request,
                                         std::span<std::uint8_t> space) const noexcept;

    // The same for a request whose answer needs nothing but memory, not even a line in the log, which may have to wait for
    // who reads it. Empty for any other, of which nothing has been done then.
    std::span<const std::uint8_t> handleAtOnce(Session& session, std::span<const std::uint8_t> request,
                                               std::span<std::uint8_t> space) const noexcept;

    // The answer to something that is no request: kind 4, result 87.
    static std::span<const std::uint8_t> refuse(std::span<std::uint8_t> space) noexcept;

 private:
    const Operation* find(std::uint16_t opcode, Via via) const noexcept;
    Outcome run(const Operation& operation, const Call& call, RequestReader& reader) const;

    Context context_;
    std::array<const Operation*, 512> byOpcode_{};  // no operation code is as high as that
};

}  // namespace srv
