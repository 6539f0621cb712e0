// CWnd and CPropertySheet: handles that are named, pages that are recorded.
#include <gtest/gtest.h>

#include "CPropertySheet.h"
#include "CWnd.h"
#include "Exceptions.h"
#include "ModuleState.h"
#include "strings.h"

namespace {

const HWND someWindow = reinterpret_cast<HWND>(0x1234);

TEST(CWnd, Attached_namesTheWindowUntilDetached)
{
    CWnd window;
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_TRUE(window.Attach(someWindow));
    EXPECT_EQ(window.GetSafeHwnd(), someWindow);
    EXPECT_EQ(window.m_hWnd, someWindow);
    EXPECT_EQ(window.Detach(), someWindow);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
}

TEST(CWnd, AttachedTwice_keepsTheFirst)
{
    CWnd window;
    window.Attach(someWindow);
    EXPECT_FALSE(window.Attach(reinterpret_cast<HWND>(0x5678)));
    EXPECT_FALSE(CWnd().Attach(nullptr));
    EXPECT_EQ(window.GetSafeHwnd(), someWindow);
}

TEST(CPropertySheet, AddedPages_areRecordedInOrder)
{
    CPropertySheet sheet;
    CPropertyPage first;
    CPropertyPage second;
    sheet.AddPage(&first);
    sheet.AddPage(&second);
    EXPECT_EQ(sheet.GetPageCount(), 2);
    EXPECT_EQ(sheet.GetPage(0), &first);
    EXPECT_EQ(sheet.GetPage(1), &second);
    EXPECT_EQ(sheet.GetPage(2), nullptr);
    EXPECT_EQ(sheet.GetPageIndex(&second), 1);
    EXPECT_THROW(sheet.AddPage(nullptr), CInvalidArgException);
}

TEST(CPropertySheet, RemovedPage_leavesTheOthers)
{
    CPropertySheet sheet;
    CPropertyPage first;
    CPropertyPage second;
    sheet.AddPage(&first);
    sheet.AddPage(&second);
    sheet.RemovePage(&first);
    sheet.RemovePage(&first);
    sheet.RemovePage(7);
    EXPECT_EQ(sheet.GetPageCount(), 1);
    EXPECT_EQ(sheet.GetPage(0), &second);
    EXPECT_EQ(sheet.GetPageIndex(&first), -1);
}

TEST(CPropertyPage, Record_namesModuleTemplateAndCaption)
{
    const CPropertyPage page(77, KXTEST_IDS_LAST_OF_BLOCK);
    EXPECT_EQ(page.m_psp.dwSize, sizeof(PROPSHEETPAGEA));
    EXPECT_EQ(page.m_psp.hInstance, AfxGetInstanceHandle());
    EXPECT_EQ(page.m_psp.pszTemplate, MAKEINTRESOURCEA(77));
    EXPECT_TRUE(page.m_psp.dwFlags & PSP_USETITLE);
    EXPECT_STREQ(page.m_psp.pszTitle, "last of its block");
}

}  // namespace
