#include "frame/valueEnumeration.h"

#include <utility>

namespace {

TextList valuesOneByOne(const ValueEnumeration& enumeration, const char* object)
{
    TextList list;
    for (unsigned long i = 0;; ++i) {
        char name[textCapacity] = {};
        char value[textCapacity] = {};
        unsigned long nameLength = sizeof name;
        unsigned long valueLength = sizeof value;
        if (enumeration.single(object, i, name, &nameLength, value, &valueLength) != ERROR_SUCCESS) return list;
        list.emplace_back(name, nameLength);
        list.emplace_back(value, valueLength);
    }
}

TextList values(ApiCall& call, const ValueEnumeration& enumeration, const char* object, const char* subKey)
{
    TextList list;
    Reply reply = call.request(enumeration.list, object, subKey, nullptr, 0UL, enumeration.capacity);
    if (readList(reply, enumeration.capacity, splitList, list)) return list;
    return valuesOneByOne(enumeration, object);
}

long pairOut(ApiCall& call, ListCache& cache, const TextList& list, unsigned long iValue, char* name,
             unsigned long* nameLength, char* value, unsigned long* valueLength)
{
    if (iValue >= list.size() / 2) {
        cache.drop();
        return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< return DCFG_ERR_NO_MORE_ITEMS");
    }
    const std::string& nameText = list[2 * iValue];
    const std::string& valueText = list[2 * iValue + 1];
    if (!fitsOut(nameText, name, nameLength) || !fitsOut(valueText, value, valueLength)) {
        return call.fail(DCFG_ERR_BUFFER_TOO_SHORT, "<< return Error=DCFG_ERR_BUFFER_TOO_SHORT");
    }
    copyOut(nameText, name, nameLength);
    copyOut(valueText, value, valueLength);
    KX_RESULT(call, "<< return ok Parameter %s Value %s ", nameText.c_str(), valueText.c_str());
    return ERROR_SUCCESS;
}

}  // namespace

long enumerateValue(ApiCall& call, const ValueEnumeration& enumeration, const char* object, const char* subKey,
                    unsigned long iValue, char* name, unsigned long* nameLength, char* value,
                    unsigned long* valueLength)
{
    ListCache::Handle list = enumeration.cache.get();
    if (!list) list = enumeration.cache.put(values(call, enumeration, object, subKey));
    return pairOut(call, enumeration.cache, *list, iValue, name, nameLength, value, valueLength);
}
