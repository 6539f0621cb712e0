#include "ModuleState.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "WinApp.h"

namespace {

class TestApp : public CWinApp
{
 public:
    TestApp() : CWinApp("framework tests") {}
};

TestApp app;

AFX_MODULE_STATE foreignState{nullptr, nullptr, nullptr};

// Runs the test under another module's state, as when a callback arrives.
class ForeignState
{
 public:
    ForeignState() : previous_(AfxSetModuleState(&foreignState)) {}
    ~ForeignState() { AfxSetModuleState(previous_); }

 private:
    AFX_MODULE_STATE* previous_;
};

TEST(ModuleState, OfTheModule_namesItsApplicationAndInstance)
{
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    EXPECT_EQ(AfxGetApp(), &app);
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(app.m_hInstance, GetModuleHandleA(nullptr));
    EXPECT_STREQ(app.m_pszAppName, "framework tests");
}

TEST(ModuleState, SecondApplicationObject_doesNotReplaceTheFirst)
{
    {
        const TestApp second;
        EXPECT_EQ(AfxGetApp(), &app);
    }
    EXPECT_EQ(AfxGetApp(), &app);
}

TEST(ModuleState, ResourceHandle_canBeSetAside)
{
    const HINSTANCE before = AfxGetResourceHandle();
    AfxSetResourceHandle(nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
    AfxSetResourceHandle(before);
}

TEST(ModuleContext, Entered_makesTheModulesStateCurrent)
{
    const ForeignState foreign;
    EXPECT_EQ(AfxGetApp(), nullptr);
    {
        const ModuleContext context;
        EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    }
    EXPECT_EQ(AfxGetModuleState(), &foreignState);
}

TEST(ModuleContext, LeftByException_restoresTheStateBefore)
{
    const ForeignState foreign;
    try {
        const ModuleContext context;
        throw std::runtime_error("left early");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(AfxGetModuleState(), &foreignState);
}

TEST(ModuleContext, Nested_restoresEachStateBefore)
{
    const ForeignState outer;
    const ModuleContext context;
    {
        const ForeignState inner;
        {
            const ModuleContext again;
            EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
        }
        EXPECT_EQ(AfxGetModuleState(), &foreignState);
    }
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
}

TEST(ModuleContext, OfOneThread_isNotSeenByAnother)
{
    const ForeignState foreign;
    AFX_MODULE_STATE* seen = nullptr;
    std::thread([&] { seen = AfxGetModuleState(); }).join();
    EXPECT_EQ(seen, AfxGetStaticModuleState());
}

TEST(ModuleContext, EnteredAndLeft_keepsTheLastError)
{
    SetLastError(1234);
    {
        const ModuleContext context;
        EXPECT_EQ(GetLastError(), 1234u);
        SetLastError(5678);
    }
    EXPECT_EQ(GetLastError(), 5678u);
}

}  // namespace
