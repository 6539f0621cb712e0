#include "store/Journal.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace srv {

namespace {

const std::wstring journalKey = L"Journal";
const std::wstring recordName = L"Record";

constexpr std::uint32_t magic = 0x314A584B;  // "KXJ1"

using Bytes = std::vector<std::uint8_t>;

// A record's parts have names of their own, so that writing it leaves the parts of the record before it alone.
std::wstring partName(std::uint32_t generation, std::uint32_t index)
{
    return L"Part" + std::to_wstring(generation) + L'.' + std::to_wstring(index);
}

// FNV-1a: tells a record that was cut or overwritten from a whole one.
std::uint64_t checksum(std::span<const std::uint8_t> bytes) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const std::uint8_t byte : bytes)
        hash = (hash ^ byte) * 0x100000001B3;
    return hash;
}

// What stands at the beginning of the record.
struct Header
{
    std::uint32_t magic;
    std::uint32_t generation;
    std::uint32_t parts;     // how many of its parts precede the record's own bytes
    std::uint32_t reserved;  // 0
    std::uint64_t checksum;  // of all bytes, the parts' first
};

class Writer
{
 public:
    void number(std::uint32_t value) { append(&value, sizeof value); }
    void text(const std::wstring& value)
    {
        number(static_cast<std::uint32_t>(value.size()));
        append(value.data(), value.size() * sizeof(wchar_t));
    }
    void table(const ValueTable& values)
    {
        number(static_cast<std::uint32_t>(values.size()));
        for (const Value& value : values) {
            text(value.name);
            text(value.text);
        }
    }
    Bytes take() { return std::move(bytes_); }

 private:
    void append(const void* data, std::size_t length)
    {
        const auto* const from = static_cast<const std::uint8_t*>(data);
        bytes_.insert(bytes_.end(), from, from + length);
    }

    Bytes bytes_;
};

// Reading past the end gives zeros and is remembered.
class Reader
{
 public:
    explicit Reader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    std::uint32_t number()
    {
        std::uint32_t value = 0;
        take(&value, sizeof value);
        return value;
    }
    std::wstring text()
    {
        const std::size_t length = number();
        if (length > rest_.size() / sizeof(wchar_t)) {
            broken_ = true;
            return {};
        }
        std::wstring value(length, L'\0');
        take(value.data(), length * sizeof(wchar_t));
        return value;
    }
    ValueTable table()
    {
        ValueTable values;
        for (std::uint32_t left = number(); left > 0 && !broken_; --left) {
            const std::wstring name = text();
            values.set(name, text());
        }
        return values;
    }
    bool wholeAndDone() const noexcept { return !broken_ && rest_.empty(); }
    bool broken() const noexcept { return broken_; }

 private:
    void take(void* data, std::size_t length)
    {
        if (length > rest_.size()) {
            broken_ = true;
            return;
        }
        if (length > 0) std::memcpy(data, rest_.data(), length);
        rest_ = rest_.subspan(length);
    }

    std::span<const std::uint8_t> rest_;
    bool broken_ = false;
};

Bytes encode(const std::vector<Step>& steps)
{
    Writer writer;
    writer.number(static_cast<std::uint32_t>(steps.size()));
    for (const Step& step : steps) {
        writer.number(static_cast<std::uint32_t>(step.kind));
        writer.number(static_cast<std::uint32_t>(step.family));
        writer.text(step.name);
        writer.table(step.content.values);
        writer.table(step.content.ndi);
    }
    return writer.take();
}

bool decode(std::span<const std::uint8_t> bytes, std::vector<Step>& steps)
{
    Reader reader(bytes);
    for (std::uint32_t left = reader.number(); left > 0 && !reader.broken(); --left) {
        Step step;
        const std::uint32_t kind = reader.number();
        const std::uint32_t family = reader.number();
        if (kind < 1 || kind > 2 || family > 1) return false;
        step.kind = static_cast<Step::Kind>(kind);
        step.family = static_cast<Family>(family);
        step.name = reader.text();
        step.content.values = reader.table();
        step.content.ndi = reader.table();
        steps.push_back(std::move(step));
    }
    return reader.wholeAndDone();
}

const RawValue* named(const std::vector<RawValue>& values, const std::wstring& name)
{
    const auto at = std::find_if(values.begin(), values.end(), [&](const RawValue& v) { return v.name == name; });
    return at == values.end() ? nullptr : &*at;
}

// The record's header, and its bytes put together; false if they are not all there.
bool collect(const std::vector<RawValue>& values, const RawValue& record, Header& header, Bytes& bytes)
{
    if (record.data.size() < sizeof header) return false;
    std::memcpy(&header, record.data.data(), sizeof header);
    if (header.magic != magic) return false;
    for (std::uint32_t index = 0; index < header.parts; ++index) {
        const RawValue* const part = named(values, partName(header.generation, index));
        if (!part) return false;
        bytes.insert(bytes.end(), part->data.begin(), part->data.end());
    }
    bytes.insert(bytes.end(), record.data.begin() + sizeof header, record.data.end());
    return checksum(bytes) == header.checksum;
}

}  // namespace

LSTATUS Journal::read(std::optional<std::vector<Step>>& steps, bool& damaged)
{
    steps.reset();
    damaged = false;
    std::vector<RawValue> values;
    const LSTATUS status = registry_.values(journalKey, values);
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (status != ERROR_SUCCESS) return status;

    const RawValue* const record = named(values, recordName);
    if (!record) return ERROR_SUCCESS;
    Header header{};
    Bytes bytes;
    std::vector<Step> found;
    damaged = !collect(values, *record, header, bytes) || !decode(bytes, found);
    generation_ = header.generation;
    if (!damaged) steps = std::move(found);
    return ERROR_SUCCESS;
}

LSTATUS Journal::mayCarryOut(const std::vector<Step>& steps)
{
    for (const Step& step : steps) {
        const LSTATUS status = step.kind == Step::Kind::Remove
                                   ? mayRemoveObject(registry_, step.family, step.name)
                                   : mayWriteContent(registry_, step.family, step.name, step.content);
        if (status != ERROR_SUCCESS) return status;
    }
    return registry_.mayChange(journalKey, false);
}

LSTATUS Journal::write(const std::vector<Step>& steps)
{
    const Bytes bytes = encode(steps);
    if (const LSTATUS status = registry_.createKey(journalKey)) return status;

    std::span<const std::uint8_t> rest(bytes);
    Header header{magic, ++generation_, 0, 0, checksum(bytes)};
    for (; rest.size() > partSize_; ++header.parts) {
        partsLeft_ = true;
        const LSTATUS status = registry_.setValue(journalKey, partName(header.generation, header.parts), REG_BINARY,
                                                  rest.first(partSize_));
        if (status != ERROR_SUCCESS) return status;
        rest = rest.subspan(partSize_);
    }
    Bytes record(sizeof header + rest.size());
    std::memcpy(record.data(), &header, sizeof header);
    if (!rest.empty()) std::memcpy(record.data() + sizeof header, rest.data(), rest.size());
    return registry_.setValue(journalKey, recordName, REG_BINARY, record);
}

LSTATUS Journal::clear()
{
    const LSTATUS status = registry_.deleteValue(journalKey, recordName);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
    if (!partsLeft_) return ERROR_SUCCESS;

    // Without a record parts mean nothing and only take room; those that stay are tried again the next time.
    std::vector<RawValue> values;
    partsLeft_ = registry_.values(journalKey, values) == ERROR_SUCCESS;
    bool allGone = true;
    for (const RawValue& value : values)
        allGone = registry_.deleteValue(journalKey, value.name) == ERROR_SUCCESS && allGone;
    if (allGone) partsLeft_ = false;
    return ERROR_SUCCESS;
}

LSTATUS Journal::carryOut(Registry& registry, const std::vector<Step>& steps)
{
    for (const Step& step : steps) {
        const LSTATUS status = step.kind == Step::Kind::Put
                                   ? writeContent(registry, step.family, step.name, step.content)
                                   : removeObject(registry, step.family, step.name);
        if (status != ERROR_SUCCESS) return status;
    }
    return ERROR_SUCCESS;
}

}  // namespace srv
