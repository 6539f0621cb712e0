// Checks a value against a parameter's description, wherever that comes from.
#pragma once

#include "frame/LocalCall.h"
#include "kxframework.h"

class ParamDescription
{
 public:
    virtual ~ParamDescription() = default;

    // False, and the text as it was: there is no such attribute.
    virtual bool attribute(const char* name, CString& text) = 0;
    // Appends the items "value/text" of an enumeration.
    virtual void items(CStringList& list) = 0;
};

// The result of LogDeviceCheckValue; lines are traced under the call's name. Attributes are asked for only when the
// check comes to them, each once.
long checkValue(const LocalCall& call, const char* lpszParameter, ParamDescription& description, CString& value);

// A number as the type and base of its parameter say. What follows the digits is ignored; without digits it is 0.
double parseNumber(const char* text, const char* type, const char* base);
