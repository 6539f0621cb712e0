#include <cstring>
#include <vector>

#include "question_generated.h"
#include "texts.h"

namespace {

flatbuffers::FlatBufferBuilder builder;  // kept between messages, as is usual
std::vector<std::uint8_t> reply;

std::size_t encodeRequest()
{
    builder.Clear();
    builder.Finish(
        fb::CreateQuestionDirect(builder, texts::device, texts::parameter, texts::language, texts::capacity));
    return builder.GetSize();
}

std::size_t copy(const flatbuffers::String* text, char (&buffer)[260])
{
    std::memcpy(buffer, text->c_str(), text->size() + 1);
    return text->size();
}

std::size_t decodeReply()
{
    flatbuffers::Verifier verifier(reply.data(), reply.size());
    if (!verifier.VerifyBuffer<fb::Answer>()) return 0;
    const auto* const answer = flatbuffers::GetRoot<fb::Answer>(reply.data());
    char value[260];
    char unit[260];
    if (answer->result() != 0 || answer->value()->size() >= sizeof value || answer->unit()->size() >= sizeof unit)
        return 0;
    return copy(answer->value(), value) + copy(answer->unit(), unit);
}

}  // namespace

Encoding flatBuffersEncoding()
{
    flatbuffers::FlatBufferBuilder answer;
    answer.Finish(fb::CreateAnswerDirect(answer, 0, texts::value.c_str(), texts::unit.c_str()));
    reply.assign(answer.GetBufferPointer(), answer.GetBufferPointer() + answer.GetSize());
    return {"FlatBuffers " FLATBUFFERS_STRING(FLATBUFFERS_VERSION_MAJOR), encodeRequest, decodeReply};
}
