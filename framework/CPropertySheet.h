// CPropertySheet: the record of pages that an application offers and that extension libraries add their own to.
//
// Nothing is shown here. The operations are virtual so that a page added by another module is recorded by the module
// that made the sheet, with its memory. The sheet does not own its pages; a page outlives the sheet's use of it.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <vector>

#include "CString.h"
#include "CWnd.h"

class CPropertyPage : public CWnd
{
 public:
    // The dialog template in the calling module's resources, and the caption's string resource (0: the template's).
    explicit CPropertyPage(UINT templateId = 0, UINT captionId = 0);

    PROPSHEETPAGEA m_psp;

 private:
    CString caption_;
};

class CPropertySheet : public CWnd
{
 public:
    CPropertySheet() = default;
    explicit CPropertySheet(const char* caption) : caption_(caption) {}

    virtual void AddPage(CPropertyPage* page);     // throws CInvalidArgException for NULL
    virtual void RemovePage(CPropertyPage* page);  // a page that is not in the sheet: nothing
    virtual void RemovePage(int index);            // no such page: nothing
    virtual int GetPageCount() const;
    virtual CPropertyPage* GetPage(int index) const;            // NULL: no such page
    virtual int GetPageIndex(const CPropertyPage* page) const;  // -1: not in the sheet

 private:
    CString caption_;
    std::vector<CPropertyPage*> pages_;
};
