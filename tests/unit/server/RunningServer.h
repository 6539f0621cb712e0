// A whole server in the test's process, at places of its own.
#pragma once

#include <memory>

#include "main/Server.h"
#include "PipeClient.h"
#include "TestServer.h"

struct RunningServer : testing::Test
{
    TestKey key;
    srv::Log log{srv::Level::Error};
    srv::ServerPlaces places = ownPlaces(key);
    std::unique_ptr<srv::Server> server = make();

    static srv::ServerPlaces ownPlaces(const TestKey& key)
    {
        const std::wstring own = std::to_wstring(GetCurrentProcessId());
        srv::ServerPlaces places;
        places.channelPipe = L"\\\\.\\pipe\\KxovaTest" + own;
        places.serverPipe = L"\\\\.\\pipe\\KxovaTestPipe" + own;
        places.startEvent = L"KxovaTestStart" + own;
        places.instanceMutex = L"KxovaTestInstance" + own;
        places.systemHardware = false;
        places.flushEvents = L"KxovaTest" + own;
        places.hive = HKEY_CURRENT_USER;
        places.machineKey = key.path() + L"\\Machine";
        places.productKey = key.path();
        places.storeKey = key.path() + L"\\NORIX";
        return places;
    }
    std::unique_ptr<srv::Server> make()
    {
        return std::make_unique<srv::Server>(places, std::make_shared<catalogue::Catalogue>(smallCatalogue()), log);
    }

    void SetUp() override
    {
        const auto failure = server->start();
        ASSERT_FALSE(failure.has_value()) << failure->text;
    }
    void TearDown() override { EXPECT_TRUE(server->stop(5000)); }
};
