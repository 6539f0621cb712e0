// Tells the language that the library finds for this program.

#include <cstdio>

#include "kxframework.h"
#include "kxovaapi.h"

int main()
{
    CString language;
    CString extension;
    DCFG_GetLanguage(language, extension);
    std::printf("%s/%s", language.GetString(), extension.GetString());
    return 0;
}
