#include "kxLegacy/valueCheck.h"

#include <cmath>
#include <cstdlib>

#include "kxova/results.h"
#include "kxstring32x.h"

namespace {

CString attributeOr(ParamDescription& description, const char* name, const char* missing)
{
    CString text = missing;
    description.attribute(name, text);
    return text;
}

long checkEnum(const LocalCall& call, ParamDescription& description, const CString& value)
{
    KX_DETAIL(call, "ParamDesc ist enumerierte Liste-> prüfe ob Wert in Liste enthalten ist");
    CStringList items;
    description.items(items);
    for (POSITION at = items.GetHeadPosition(); at;) {
        if (sFirstFromSeperatedListOneOf(items.GetNext(at), "/").CompareNoCase(value) == 0) return ERROR_SUCCESS;
    }
    return DCFG_VALUE_NOT_IN_ENUM;
}

long checkBool(const LocalCall& call, const CString& value)
{
    KX_DETAIL(call, "ParamDesc ist Boolscher Wert-> prüfe ob Wert TRUE oder FALSE enthält");
    if (value.CompareNoCase("false") == 0 || value.CompareNoCase("true") == 0) return ERROR_SUCCESS;
    KX_RESULT(call, "->return Error:übergebner Wert ist kein boolscher Wert (TRUE oder FALSE)");
    return DCFG_VALUE_NOT_BOOL;
}

long checkNumber(const LocalCall& call, ParamDescription& description, const CString& type, CString& value)
{
    KX_DETAIL(call, "anderer Typ(long,word,dword) -> zulässigkeit des Wertes wird über Min,Max,Step,Base bestimmt");
    const CString min = attributeOr(description, "min", "");
    const CString max = attributeOr(description, "max", "");
    const CString step = attributeOr(description, "step", "");
    const CString base = attributeOr(description, "base", "10");

    if (value.CompareNoCase("min") == 0) {
        value = min;
    } else if (value.CompareNoCase("max") == 0) {
        value = max;
    } else if (value.CompareNoCase("default") == 0) {
        value = attributeOr(description, "default", "");
    }
    if (value.IsEmpty()) {
        KX_RESULT(call, "Leerer Wert oder Min-, Max-, Standartwert nicht gefunden");
        return ERROR_INVALID_PARAMETER;
    }

    // The value is looked at only where there is a minimum: without one, every maximum from 0 accepts it.
    double number = 0.0;
    double lowest = 0.0;
    if (!min.IsEmpty()) {
        number = parseNumber(value, type, base);
        lowest = parseNumber(min, type, base);
        if (lowest > number) {
            KX_RESULT(call, "->return Error DCFG_SET_VAL_LESS_THAN_MIN");
            return DCFG_SET_VAL_LESS_THAN_MIN;
        }
    }
    if (!max.IsEmpty() && number > parseNumber(max, type, base)) {
        KX_RESULT(call, "->return Error DCFG_SET_VAL_BIGGER_THAN_MAX");
        return DCFG_SET_VAL_BIGGER_THAN_MAX;
    }
    if (!step.IsEmpty() && !min.IsEmpty()) {
        const double grid = parseNumber(step, type, base);
        // Written so that a remainder that is no number is off the grid.
        if (grid >= 2.0 && !(std::fmod(number - lowest, grid) == 0.0)) {
            KX_RESULT(call, "->return Error DCFG_NOT_IN_STEP");
            return DCFG_NOT_IN_STEP;
        }
    }
    return ERROR_SUCCESS;
}

}  // namespace

double parseNumber(const char* text, const char* type, const char* base)
{
    long radix = std::strtol(base, nullptr, 10);
    if (radix < 2 || radix >= 36) radix = 10;
    if (_stricmp(type, "int") == 0 || _stricmp(type, "long") == 0) {
        return static_cast<double>(std::strtol(text, nullptr, static_cast<int>(radix)));
    }
    return static_cast<double>(std::strtoul(text, nullptr, static_cast<int>(radix)));
}

long checkValue(const LocalCall& call, const char* lpszParameter, ParamDescription& description, CString& value)
{
    CString type;
    if (!description.attribute("type", type)) {
        KX_DETAIL(call, "continue : Keine ParamDesc für Parameter %s vorahnden - setze Wert ohne Parameterkontrolle",
                  lpszParameter);
        return ERROR_SUCCESS;
    }
    KX_DETAIL(call, "für den Entry=%s liegt die ParamDesc=%s vor", lpszParameter, type.GetString());
    if (type.CompareNoCase("enum") == 0) return checkEnum(call, description, value);
    if (type.CompareNoCase("bool") == 0) return checkBool(call, value);
    if (type.CompareNoCase("string") == 0) {
        KX_DETAIL(call, "Typ String -> keine weitere Beschränkungen");
        return ERROR_SUCCESS;
    }
    return checkNumber(call, description, type, value);
}
