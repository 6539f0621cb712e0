#include "CPropertySheet.h"

#include <algorithm>

#include "Exceptions.h"
#include "ModuleState.h"

CPropertyPage::CPropertyPage(UINT templateId, UINT captionId) : m_psp{}
{
    m_psp.dwSize = sizeof m_psp;
    m_psp.hInstance = AfxGetResourceHandle();
    m_psp.pszTemplate = MAKEINTRESOURCEA(templateId);
    if (captionId != 0 && caption_.LoadString(captionId)) {
        m_psp.dwFlags |= PSP_USETITLE;
        m_psp.pszTitle = caption_;
    }
}

void CPropertySheet::AddPage(CPropertyPage* page)
{
    if (!page) AfxThrowInvalidArgException();
    pages_.push_back(page);
}

void CPropertySheet::RemovePage(CPropertyPage* page)
{
    RemovePage(GetPageIndex(page));
}

void CPropertySheet::RemovePage(int index)
{
    if (GetPage(index)) pages_.erase(pages_.begin() + index);
}

int CPropertySheet::GetPageCount() const
{
    return static_cast<int>(pages_.size());
}

CPropertyPage* CPropertySheet::GetPage(int index) const
{
    return index >= 0 && index < GetPageCount() ? pages_[static_cast<std::size_t>(index)] : nullptr;
}

int CPropertySheet::GetPageIndex(const CPropertyPage* page) const
{
    const auto at = std::find(pages_.begin(), pages_.end(), page);
    return at == pages_.end() ? -1 : static_cast<int>(at - pages_.begin());
}
