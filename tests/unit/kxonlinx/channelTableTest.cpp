#include "channel_table.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using kxonlinx::Bounds;
using kxonlinx::Channel;
using kxonlinx::ChannelTable;
using kxonlinx::ExchangeResult;
using kxonlinx::Ref;

class CountedTransport final : public kxonlinx::Transport
{
 public:
    explicit CountedTransport(int& living) : living_(living) { ++living_; }
    ~CountedTransport() override { --living_; }
    kxonlinx_error connect(const Bounds&) noexcept override { return KXONLINX_OK; }
    bool connected() const noexcept override { return true; }
    ExchangeResult exchange(std::span<const std::uint8_t>, std::span<std::uint8_t>, const Bounds&) noexcept override
    {
        return {KXONLINX_OK, 0, true};
    }
    void close() noexcept override {}
    bool reachable() const noexcept override { return true; }

 private:
    int& living_;
};

class Table : public testing::Test
{
 protected:
    ~Table() override { table.closeAll(); }

    Ref<Channel> make() { return Channel::create(std::make_unique<CountedTransport>(living), 1000); }

    kxonlinx_error lookUp(int handle)
    {
        kxonlinx_error error;
        table.find(handle, error);
        return error;
    }

    int living = 0;
    ChannelTable table;
};

TEST_F(Table, Added_isFoundUnderAPositiveHandle)
{
    const int handle = table.add(make());
    EXPECT_GT(handle, 0);
    EXPECT_EQ(lookUp(handle), KXONLINX_OK);
}

TEST_F(Table, Removed_isNotOpen)
{
    const int handle = table.add(make());
    kxonlinx_error error;
    table.remove(handle, error);
    EXPECT_EQ(error, KXONLINX_OK);
    EXPECT_EQ(lookUp(handle), KXONLINX_NOT_OPEN);
    EXPECT_EQ(living, 0);
}

TEST_F(Table, HandleOfAnEarlierUse_isNotOpen)
{
    const int earlier = table.add(make());
    kxonlinx_error error;
    table.remove(earlier, error);
    const int now = table.add(make());
    EXPECT_NE(earlier, now);
    EXPECT_EQ(lookUp(earlier), KXONLINX_NOT_OPEN);
    EXPECT_EQ(lookUp(now), KXONLINX_OK);
}

TEST_F(Table, HandleNotGivenYet_isBad)
{
    const int handle = table.add(make());
    EXPECT_EQ(lookUp(handle + 1), KXONLINX_BAD_HANDLE);
    EXPECT_EQ(lookUp(handle + static_cast<int>(ChannelTable::capacity)), KXONLINX_BAD_HANDLE);
}

TEST_F(Table, Full_takesNoMoreAndDropsTheChannel)
{
    for (std::size_t i = 0; i < ChannelTable::capacity; ++i)
        EXPECT_GT(table.add(make()), 0);
    EXPECT_EQ(table.add(make()), ChannelTable::noHandle);
    EXPECT_EQ(living, static_cast<int>(ChannelTable::capacity));
}

TEST_F(Table, FoundChannel_outlivesItsRemoval)
{
    const int handle = table.add(make());
    kxonlinx_error error;
    {
        const Ref<Channel> found = table.find(handle, error);
        table.remove(handle, error);
        EXPECT_EQ(living, 1);
    }
    EXPECT_EQ(living, 0);
}

TEST_F(Table, CloseAll_dropsEveryChannel)
{
    const int handle = table.add(make());
    table.add(make());
    table.closeAll();
    EXPECT_EQ(living, 0);
    EXPECT_EQ(lookUp(handle), KXONLINX_NOT_OPEN);
}

}  // namespace
