#include "Input.h"
#include "kxLegacy/valueCheck.h"
#include "kxstring32x.h"
#include "targets.h"

namespace {

// What an input says, attribute by attribute: "type=int", an item without "=".
class Description : public ParamDescription
{
 public:
    explicit Description(Input input) : input_(input) {}

    bool attribute(const char* name, CString& text) override
    {
        for (Input lines = input_; !lines.empty();) {
            const std::string line = lines.line();
            const std::size_t end = line.find('=');
            if (end == std::string::npos || line.compare(0, end, name) != 0) continue;
            text = line.c_str() + end + 1;
            return true;
        }
        return false;
    }
    void items(CStringList& list) override
    {
        for (Input lines = input_; !lines.empty();)
            list.AddTail(lines.line().c_str());
    }

 private:
    Input input_;
};

}  // namespace

void fuzzNumbers(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const std::string text = input.line();
    CString value(text.c_str());
    Description description(input);
    const LocalCall call("LogDeviceCheckValue: ");
    checkValue(call, "parameter", description, value);

    const std::string type = input.line();
    const std::string base = input.line();
    parseNumber(text.c_str(), type.c_str(), base.c_str());
}
