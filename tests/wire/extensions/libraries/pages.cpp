// Adds a page to the caller's property sheet.

#include "kxframework.h"

extern "C" __declspec(dllexport) long AddPages(CPropertySheet* sheet)
{
    static CPropertyPage page;
    if (sheet) sheet->AddPage(&page);
    return 0x1234;
}
