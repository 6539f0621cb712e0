// Answers about the platform.

#include <gmock/gmock.h>

#include "importHook.h"
#include "kxovaapi.h"
#include "traceCapture.h"

using testing::ElementsAre;

namespace {

constexpr char function[] = "DCFG_IsTerminalServicesEnabled:";

TEST(Platform, IsWindowsNt)
{
    unsigned long platform = 7;
    unsigned long second = 7;
    EXPECT_EQ(DCFG_GetPlatform(platform, second), 0);
    EXPECT_EQ(platform, 2u);
    EXPECT_EQ(second, 1u);
}

TEST(Platform, HasPlugAndPlay)
{
    EXPECT_EQ(DCFG_IsPnPOs(), 1);
}

BOOL WINAPI serverWithTerminalServices(OSVERSIONINFOA* version)
{
    auto* const extended = reinterpret_cast<OSVERSIONINFOEXA*>(version);
    EXPECT_EQ(extended->dwOSVersionInfoSize, 156u);
    extended->dwPlatformId = 2;
    extended->dwMajorVersion = 6;
    extended->dwMinorVersion = 1;
    extended->wSuiteMask = 0x0112;
    return TRUE;
}

BOOL WINAPI workstation(OSVERSIONINFOA* version)
{
    reinterpret_cast<OSVERSIONINFOEXA*>(version)->wSuiteMask = 0x0100;
    return TRUE;
}

BOOL WINAPI noVersion(OSVERSIONINFOA* version)
{
    reinterpret_cast<OSVERSIONINFOEXA*>(version)->wSuiteMask = 0x0010;
    return FALSE;
}

TEST(TerminalServices, Present_is16)
{
    const ImportHook hook("GetVersionExA", serverWithTerminalServices);
    EXPECT_EQ(DCFG_IsTerminalServicesEnabled(), 16);
}

TEST(TerminalServices, Absent_is0)
{
    const ImportHook hook("GetVersionExA", workstation);
    EXPECT_EQ(DCFG_IsTerminalServicesEnabled(), 0);
}

TEST(TerminalServices, NoVersion_is0)
{
    const ImportHook hook("GetVersionExA", noVersion);
    EXPECT_EQ(DCFG_IsTerminalServicesEnabled(), 0);
}

TEST(TerminalServices, Trace_version)
{
    const ImportHook hook("GetVersionExA", serverWithTerminalServices);
    const TraceCapture capture;
    DCFG_IsTerminalServicesEnabled();
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"PE", function, "bRet=1 dwPlatformId=2 MajVers=6 MinVers=1 wSuiteMask=0x112"},
                            TraceLine{"FE", function, "<< return=16"}));
}

TEST(TerminalServices, Trace_noVersion)
{
    const ImportHook hook("GetVersionExA", noVersion);
    const TraceCapture capture("0x80");
    DCFG_IsTerminalServicesEnabled();
    EXPECT_THAT(capture.of(function), ElementsAre(TraceLine{"FE", function, "<< return ERROR bei GetVersionEx"}));
}

}  // namespace
