// Hardware changes, of boards and those that the system reports to the server, in the window of a client.
#include <windows.h>

#include <dbt.h>

#include <cwchar>

#include "Clients.h"

namespace {

const GUID usb = {0xA5DCBF10, 0x6530, 0x11D2, {0x90, 0x1F, 0x00, 0xC0, 0x4F, 0xB9, 0x51, 0xED}};
const GUID network = {0xCAC88484, 0x7515, 0x4C03, {0x82, 0xE6, 0x71, 0xA8, 0x7A, 0xBA, 0xC3, 0x61}};

const GUID boards = {0xC4517B3A, 0x920E, 0x4BD6, {0xA1, 0x3F, 0x6C, 0x58, 0x27, 0xE9, 0x04, 0xBD}};

// Sends the server what the system sends to those who asked for reports. (Wine carries the report to the other
// process.)
bool report(WPARAM what, const GUID& interfaceClass, const wchar_t* name)
{
    const HWND server = FindWindowExW(HWND_MESSAGE, nullptr, L"kxovasrvx hardware", nullptr);
    struct
    {
        DEV_BROADCAST_DEVICEINTERFACE_W head;
        wchar_t more[64];
    } device{};
    device.head.dbcc_size = sizeof device;
    device.head.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
    device.head.dbcc_classguid = interfaceClass;
    std::wcscpy(device.head.dbcc_name, name);
    return server && SendMessageW(server, WM_DEVICECHANGE, what, reinterpret_cast<LPARAM>(&device)) == TRUE;
}

class Hardware : public Clients
{
 protected:
    Hardware() : window(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {}
    ~Hardware() override { DestroyWindow(window); }

    bool await(UINT number, MSG& message) const
    {
        for (const DWORD start = GetTickCount(); GetTickCount() - start < longest;) {
            if (PeekMessageA(&message, window, number, number, PM_REMOVE)) return true;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        }
        return false;
    }

    const HWND window;
};

TEST_F(Hardware, OwnWindow_getsChangesOfItsClassUnderItsMessageType)
{
    ASSERT_EQ(OvaRegisterHardwareChanges(window, &usb), 0u);
    ASSERT_EQ(OvaSetMessageTypeForHardwareChanges(window, 2'000), 0u);
    ASSERT_TRUE(report(DBT_DEVICEARRIVAL, network, L"card"));
    ASSERT_TRUE(report(DBT_DEVICEREMOVECOMPLETE, usb, L"Ger\u00E4t"));
    MSG message;
    ASSERT_TRUE(await(2'000, message));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(WM_DEVICECHANGE));
    OvaHardwareChange change{};
    ASSERT_EQ(OvaGetHardwareChanges(static_cast<unsigned long>(message.lParam), &change), 0u);
    EXPECT_EQ(change.change, 2u);
    EXPECT_STREQ(change.name, "Ger\xE4t");
    EXPECT_TRUE(IsEqualGUID(change.interfaceClass, usb));
    EXPECT_EQ(OvaUnregisterHardwareChanges(&usb), 0u);
}

// What happened, to which board.
std::string changed(const MSG& message)
{
    OvaHardwareChange change{};
    if (OvaGetHardwareChanges(static_cast<unsigned long>(message.lParam), &change) != 0) return "unknown";
    if (!IsEqualGUID(change.interfaceClass, boards)) return "no board";
    return std::to_string(change.change) + ' ' + change.name;
}

TEST_F(Hardware, BoardThatIsPluggedInAndPulledOut_isTold)
{
    ASSERT_EQ(OvaRegisterHardwareChanges(window, &boards), 0u);
    ASSERT_EQ(plug(L"add *TVRA004 --id e2e-board"), 0);
    MSG message;
    ASSERT_TRUE(await(WM_USER, message));
    EXPECT_EQ(changed(message), "1 e2e-board");
    ASSERT_EQ(plug(L"remove e2e-board"), 0);
    ASSERT_TRUE(await(WM_USER, message));
    EXPECT_EQ(changed(message), "2 e2e-board");
    EXPECT_EQ(OvaUnregisterHardwareChanges(&boards), 0u);
}

TEST_F(Hardware, EveryChange_isPostedOnceInOrder)
{
    constexpr int count = 1'000;
    ASSERT_EQ(OvaRegisterHardwareChanges(window, &usb), 0u);
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(report(DBT_DEVICEARRIVAL, usb, std::to_wstring(i).c_str()));
    for (int i = 0; i < count; ++i) {
        MSG message;
        ASSERT_TRUE(await(WM_USER, message)) << i;
        OvaHardwareChange change{};
        ASSERT_EQ(OvaGetHardwareChanges(static_cast<unsigned long>(message.lParam), &change), 0u);
        ASSERT_EQ(change.name, std::to_string(i));
    }
    EXPECT_EQ(OvaUnregisterHardwareChanges(&usb), 0u);
}

TEST_F(Hardware, AfterARestart_theWindowGetsChangesAgain)
{
    ASSERT_EQ(OvaRegisterHardwareChanges(window, &usb), 0u);
    const Registered renewed("e2e");
    server->stop();
    server->start();
    ASSERT_TRUE(renewed.wakes());
    ASSERT_TRUE(report(DBT_DEVICEARRIVAL, usb, L"stick"));
    MSG message;
    ASSERT_TRUE(await(WM_USER, message));
    OvaHardwareChange change{};
    ASSERT_EQ(OvaGetHardwareChanges(static_cast<unsigned long>(message.lParam), &change), 0u);
    EXPECT_STREQ(change.name, "stick");
    EXPECT_EQ(OvaUnregisterHardwareChanges(&usb), 0u);
}

TEST_F(Hardware, UnknownHandle_is8012)
{
    OvaHardwareChange change{};
    EXPECT_EQ(OvaGetHardwareChanges(1, &change), 8012u);
}

}  // namespace
