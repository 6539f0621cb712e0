#include <cstring>

#include "question.pb.h"
#include "texts.h"

namespace {

// Kept between messages, as is usual.
pb::Question question;
pb::Answer answer;
std::string reply;

std::size_t encodeRequest()
{
    static char bytes[1024];
    question.Clear();
    question.set_device(texts::device);
    question.set_parameter(texts::parameter);
    question.set_language(texts::language);
    question.set_capacity(texts::capacity);
    return question.SerializeToArray(bytes, sizeof bytes) ? question.GetCachedSize() : 0;
}

std::size_t copy(const std::string& text, char (&buffer)[260])
{
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return text.size();
}

std::size_t decodeReply()
{
    char value[260];
    char unit[260];
    if (!answer.ParseFromString(reply) || answer.result() != 0 || answer.value().size() >= sizeof value ||
        answer.unit().size() >= sizeof unit)
        return 0;
    return copy(answer.value(), value) + copy(answer.unit(), unit);
}

}  // namespace

Encoding protocolBuffersEncoding()
{
    pb::Answer made;
    made.set_value(texts::value);
    made.set_unit(texts::unit);
    made.SerializeToString(&reply);
    return {"Protocol Buffers", encodeRequest, decodeReply};
}
