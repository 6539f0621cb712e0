#include "dispatch/Dispatcher.h"

#include <new>
#include <stdexcept>

namespace srv {

Dispatcher::Dispatcher(const Context& context, std::span<const Operation> operations) : context_(context)
{
    for (const Operation& operation : operations) {
        const Operation*& place = byOpcode_.at(operation.opcode);
        if (place) throw std::logic_error(std::string("two operations with one code: ") + operation.name);
        place = &operation;
    }
}

const Operation* Dispatcher::find(std::uint16_t opcode, Via via) const noexcept
{
    const Operation* const operation = opcode < byOpcode_.size() ? byOpcode_[opcode] : nullptr;
    return operation && operation->via == via ? operation : nullptr;
}

std::span<const std::uint8_t> Dispatcher::handle(Session& session, std::span<const std::uint8_t> request,
                                                 std::span<std::uint8_t> space) const noexcept
{
    RequestReader reader(request);
    ReplyWriter reply(space);
    std::uint16_t opcode = 0;
    if (!reader.u16(opcode)) {
        context_.log.warning("client %lu: a request of %zu bytes, which is none", session.clientProcess(),
                             request.size());
        return reply.finish(result::invalidParameter);
    }
    const Operation* const operation = find(opcode, session.via());
    if (!operation) {
        context_.log.warning("client %lu: unknown operation %u", session.clientProcess(), opcode);
        return reply.finish(result::notSupported);
    }
    try {
        return reply.finish(run(*operation, {context_, session, reply}, reader).result);
    } catch (const std::bad_alloc&) {
        context_.log.error("client %lu: no memory for %s", session.clientProcess(), operation->name);
        return reply.finish(result::outOfMemory);
    }
}

std::span<const std::uint8_t> Dispatcher::handleAtOnce(Session& session, std::span<const std::uint8_t> request,
                                                       std::span<std::uint8_t> space) const noexcept
{
    if (context_.log.enabled(Level::Debug)) return {};
    RequestReader reader(request);
    ReplyWriter reply(space);
    std::uint16_t opcode = 0;
    const Operation* const operation = reader.u16(opcode) ? find(opcode, session.via()) : nullptr;
    if (!operation || operation->work != Work::InMemory) return {};
    try {
        const Outcome outcome = operation->run({context_, session, reply}, reader, nullptr);
        if (outcome.fields == Fields::Malformed) return {};
        return reply.finish(outcome.result);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

Outcome Dispatcher::run(const Operation& operation, const Call& call, RequestReader& reader) const
{
    Log& log = context_.log;
    const bool detailed = log.enabled(Level::Debug);
    std::string shown;
    const Outcome outcome = operation.run(call, reader, detailed ? &shown : nullptr);
    if (outcome.fields == Fields::Malformed) {
        log.warning("client %lu: the fields of %s are malformed", call.session.clientProcess(), operation.name);
    } else if (detailed) {
        log.debug("client %lu: %s(%s) -> %u", call.session.clientProcess(), operation.name, shown.c_str(),
                  outcome.result);
    }
    return outcome;
}

std::span<const std::uint8_t> Dispatcher::refuse(std::span<std::uint8_t> space) noexcept
{
    return ReplyWriter(space).finish(result::invalidParameter);
}

}  // namespace srv
