// The dispatcher with everything behind it, which looks at every key that is written.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "notifications/Notifications.h"
#include "support/guardedMemory.h"
#include "TestServer.h"
#include "wire/frame.h"

// Keeps the paths that were written and must not be.
class ObservedRegistry : public PassingRegistry
{
 public:
    enum class Writing { Key, Deletion };
    using MayWrite = bool (*)(const std::vector<std::wstring>& parts, Writing writing);

    ObservedRegistry(srv::Registry& real, MayWrite mayWrite) : PassingRegistry(real), mayWrite_(mayWrite) {}

    const std::vector<std::wstring>& offences() const { return offences_; }

    LSTATUS createKey(const std::wstring& path) override { return look(path, Writing::Key), real_.createKey(path); }
    LSTATUS deleteKey(const std::wstring& path) override
    {
        return look(path, Writing::Deletion), real_.deleteKey(path);
    }
    LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                     std::span<const std::uint8_t> data) override
    {
        return look(path, Writing::Key), real_.setValue(path, name, type, data);
    }
    LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) override
    {
        return look(path, Writing::Key), real_.deleteValue(path, name);
    }

 private:
    void look(const std::wstring& path, Writing writing);

    MayWrite mayWrite_;
    std::vector<std::wstring> offences_;
};

struct FuzzedServer : testing::Test
{
    using Bytes = bytes::Bytes;

    FuzzedServer();

    // Requests and replies lie against memory that nobody may touch.
    Bytes ask(srv::Session& from, const Bytes& request);

    // The request that was just answered had this reply: kind 4 and a result, fields only where it succeeded.
    void expectWellFormed(const Bytes& request, const Bytes& answer);

    // A device can still be made, changed, read and deleted.
    void expectInOrder(std::uint32_t round);

    void expectNothingWrittenElsewhere() const;

    // What the requests are about is there (again), and the connections are new.
    void beginAnew();
    srv::Session& session(srv::Via via) { return via == srv::Via::Pipe ? *pipe_ : *channel_; }

 private:
    TestKey key_;
    srv::WindowsRegistry realProduct_ = key_.registry();
    srv::WindowsRegistry realMachine_{HKEY_CURRENT_USER, key_.path() + L"\\Machine"};
    srv::WindowsRegistry realStore_{HKEY_CURRENT_USER, key_.path() + L"\\NORIX"};
    ObservedRegistry product_;
    ObservedRegistry machine_;
    ObservedRegistry registry_;
    OpenStore now_{registry_};
    catalogue::Catalogue catalogue_ = smallCatalogue();
    srv::Settings settings_{registry_};
    srv::Machine hardware_{registry_, catalogue_, now_.log};
    srv::Keys keys_{now_.store, product_, machine_};
    srv::Notifications notifications_{now_.log};
    srv::Dispatcher dispatcher_;
    std::unique_ptr<srv::Session> channel_;
    std::unique_ptr<srv::Session> pipe_;
    std::uint64_t sessions_ = 0;
    GuardedMemory requestMemory_{wire::maxPayload};
    GuardedMemory replyMemory_{wire::maxPayload};
};
