// What users of the catalogue that ships with the server may rely on.
#include <set>

#include "catalogueText.h"

using catalogue::Board;
using catalogue::Catalogue;
using catalogue::DefaultLogicalDevice;
using catalogue::Language;
using catalogue::ParameterDescription;
using catalogue::Protocol;
using testing::MatchesRegex;

namespace {

class ShippedCatalogue : public testing::Test
{
 protected:
    static void SetUpTestSuite() { loaded_ = catalogue::load(KXOVA_SHIPPED_CATALOGUE); }
    static void TearDownTestSuite() { loaded_ = {}; }

    void SetUp() override
    {
        for (const catalogue::LoadError& error : loaded_.errors)
            ADD_FAILURE() << testing::PrintToString(error.text());
        ASSERT_NE(loaded_.catalogue, nullptr);
    }

    static const Catalogue& shipped() { return *loaded_.catalogue; }

    static inline catalogue::LoadResult loaded_;
};

// Every description in the catalogue, whoever it belongs to.
std::vector<const ParameterDescription*> allDescriptions(const Catalogue& catalogue)
{
    std::vector<const ParameterDescription*> found;
    const auto add = [&](const catalogue::Map<ParameterDescription>& parameters) {
        for (const auto& entry : parameters)
            found.push_back(&entry.second);
    };
    add(catalogue.parameters);
    for (const auto& entry : catalogue.protocols)
        add(entry.second.parameters);
    for (const auto& entry : catalogue.boards)
        add(entry.second.parameters);
    for (const auto& entry : catalogue.defaultLogicalDevices)
        add(entry.second.parameters);
    return found;
}

int numberOf(const DefaultLogicalDevice& device, const wchar_t* name)
{
    const std::wstring* const value = find(device.values, name);
    return value ? std::stoi(*value) : -1;
}

}  // namespace

TEST_F(ShippedCatalogue, IsLargeEnoughToBeTriedWith)
{
    EXPECT_GE(shipped().boards.size(), 36u);
    EXPECT_GE(shipped().protocols.size(), 8u);
    EXPECT_GE(shipped().defaultLogicalDevices.size(), 60u);
    EXPECT_GE(shipped().installedBoards.size(), 6u);
    EXPECT_GE(shipped().adapters.size(), 2u);
}

TEST_F(ShippedCatalogue, DeviceIdsHaveTheirForm)
{
    for (const auto& entry : shipped().boards) {
        const std::wstring& id = entry.first;
        EXPECT_TRUE(id.size() == 8 && id.starts_with(L"*TVRA") && id.find_first_not_of(L"0123456789", 5) == id.npos)
            << testing::PrintToString(id);
    }
}

TEST_F(ShippedCatalogue, CoversTheBusTypes)
{
    std::set<std::wstring> types;
    for (const auto& entry : shipped().boards)
        types.insert(entry.second.tree.values.at(L"BusType"));
    for (const wchar_t* const type :
         {L"ISA", L"PCI", L"PCIe", L"USB", L"OnBoard", L"KBUS", L"Serial", L"Network", L"Software"})
        EXPECT_TRUE(types.contains(type)) << testing::PrintToString(type);
}

TEST_F(ShippedCatalogue, EveryDefaultDeviceNamesABoardAndAProtocol)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices) {
        EXPECT_NE(shipped().board(device.deviceId), nullptr) << testing::PrintToString(name);
        EXPECT_NE(shipped().protocol(device.protocol), nullptr) << testing::PrintToString(name);
    }
}

TEST_F(ShippedCatalogue, EveryBoardAndEveryProtocolIsUsedByADefaultDevice)
{
    std::set<std::wstring> protocols;
    for (const auto& [name, board] : shipped().boards) {
        EXPECT_FALSE(board.configurations.empty()) << testing::PrintToString(name);
        for (const catalogue::Configuration& configuration : board.configurations)
            protocols.insert(configuration.protocol);
    }
    for (const auto& entry : shipped().protocols)
        EXPECT_TRUE(protocols.contains(entry.first)) << testing::PrintToString(entry.first);
}

TEST_F(ShippedCatalogue, EveryDefaultDeviceHasUnitDescriptionAndPropertySheet)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices) {
        EXPECT_TRUE(device.values.contains(L"Unit")) << testing::PrintToString(name);
        EXPECT_NE(device.texts.find(L"DescText", Language::De), nullptr) << testing::PrintToString(name);
        EXPECT_TRUE(device.ndiValues.contains(L"PropSheet")) << testing::PrintToString(name);
        EXPECT_TRUE(device.ndiValues.contains(L"enable_delete")) << testing::PrintToString(name);
    }
}

TEST_F(ShippedCatalogue, EveryRateThatADeviceCanHaveHasATextOnItsBoard)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices) {
        if (!device.values.contains(L"baudrate")) continue;
        const ParameterDescription* const description =
            shipped().describe(device.deviceId, device.protocol, L"baudrate");
        ASSERT_NE(description, nullptr);
        for (const catalogue::EnumItem& item : description->items)
            for (const Language language : {Language::De, Language::En})
                EXPECT_NE(shipped().board(device.deviceId)->texts.find(L"BaudrateResource\\" + item.value, language),
                          nullptr)
                    << testing::PrintToString(name) << testing::PrintToString(item.value);
    }
}

TEST_F(ShippedCatalogue, EveryRateThatADeviceCanHaveIsInEachOfItsBusProfiles)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices) {
        if (!device.values.contains(L"baudrate")) continue;
        const Protocol& protocol = *shipped().protocol(device.protocol);
        for (const catalogue::EnumItem& item :
             shipped().describe(device.deviceId, device.protocol, L"baudrate")->items) {
            for (const catalogue::BusProfile& profile : protocol.busProfiles)
                EXPECT_FALSE(protocol.profileValues(profile.key, item.value).empty()) << testing::PrintToString(name);
            if (protocol.busProfiles.empty()) {
                EXPECT_FALSE(protocol.profileValues({}, item.value).empty()) << testing::PrintToString(name);
            }
        }
    }
}

TEST_F(ShippedCatalogue, EveryBusProfileHasATextAndIsInTheEnumeration)
{
    for (const auto& [name, protocol] : shipped().protocols)
        for (const catalogue::BusProfile& profile : protocol.busProfiles) {
            const std::wstring id = L"BusparamResource\\" + profile.key;
            EXPECT_NE(protocol.texts.find(id, Language::De), nullptr) << testing::PrintToString(name);
            EXPECT_TRUE(shipped().describeForProtocol(name, L"busparam")->accepts(profile.key))
                << testing::PrintToString(name);
        }
}

TEST_F(ShippedCatalogue, EveryTextIsThereInGermanAndEnglish)
{
    const auto check = [](const catalogue::Texts& texts) {
        for (const auto& [id, byLanguage] : texts.byId) {
            EXPECT_FALSE(textIn(byLanguage, Language::En).empty()) << testing::PrintToString(id);
            EXPECT_TRUE(byLanguage.contains(Language::De)) << testing::PrintToString(id);
        }
    };
    for (const auto& entry : shipped().boards)
        check(entry.second.texts);
    for (const auto& entry : shipped().protocols)
        check(entry.second.texts);
    for (const auto& entry : shipped().defaultLogicalDevices)
        check(entry.second.texts);
    for (const auto& entry : shipped().logicalNames)
        check(entry.second.texts);
}

TEST_F(ShippedCatalogue, BoardsAndProtocolsAreDescribedInGermanAndEnglish)
{
    for (const auto& entry : shipped().boards)
        EXPECT_NE(entry.second.texts.find(L"DescText", Language::De), nullptr) << testing::PrintToString(entry.first);
    for (const auto& entry : shipped().protocols)
        EXPECT_NE(entry.second.texts.find(L"DescText", Language::De), nullptr) << testing::PrintToString(entry.first);
}

TEST_F(ShippedCatalogue, MpiIsThereAndItsRotationTimeFollowsTheHighestAddress)
{
    ASSERT_NE(shipped().protocol(L"MPI"), nullptr);
    for (const auto& [name, device] : shipped().defaultLogicalDevices)
        if (device.protocol == L"MPI") {
            EXPECT_EQ(numberOf(device, L"ttr"), numberOf(device, L"highest_adr") + 8) << testing::PrintToString(name);
        }
}

TEST_F(ShippedCatalogue, OwnAddressesLieWithinTheBus)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices)
        EXPECT_LE(numberOf(device, L"ts_adr"), numberOf(device, L"highest_adr")) << testing::PrintToString(name);
}

TEST_F(ShippedCatalogue, FieldbusHasAllFourBusProfiles)
{
    std::vector<std::wstring> names;
    for (const catalogue::BusProfile& profile : shipped().protocol(L"DP")->busProfiles)
        names.push_back(profile.key + L" " + profile.name);
    EXPECT_THAT(names, testing::ElementsAre(L"0 dp", L"1 std", L"2 uni", L"3 user"));
}

TEST_F(ShippedCatalogue, DefaultDevicesStartWithTheTimingOfTheirProfile)
{
    for (const auto& [name, device] : shipped().defaultLogicalDevices) {
        const std::wstring* const profile = find(device.values, L"busparam");
        if (!profile) continue;
        for (const auto& [parameter, value] :
             shipped().protocol(device.protocol)->profileValues(*profile, device.values.at(L"baudrate")))
            EXPECT_EQ(device.values.at(parameter), value)
                << testing::PrintToString(name) << testing::PrintToString(parameter);
    }
}

TEST_F(ShippedCatalogue, BuiltInBoardChoosesItsDeviceItself)
{
    const Board* const board = shipped().board(L"*TVRA010");
    ASSERT_NE(board, nullptr);
    EXPECT_FALSE(board->tree.values.at(L"Asic_Type").empty());
    for (const catalogue::Configuration& configuration : board->configurations)
        EXPECT_EQ(shipped().defaultLogicalDevice(configuration.logicalDevice)->values.at(L"Device"), L"255");
}

TEST_F(ShippedCatalogue, BackplaneBoardIsOnTheKbus)
{
    const Board* const board = shipped().board(L"*TVRA030");
    ASSERT_NE(board, nullptr);
    EXPECT_EQ(board->tree.values.at(L"BusType"), L"KBUS");
    EXPECT_EQ(board->tree.values.at(L"HardwareId"), L"KBUS\\*TVRA030");
}

TEST_F(ShippedCatalogue, EveryTypeOfDescriptionOccurs)
{
    std::set<ParameterDescription::Type> types;
    std::set<std::wstring> attributes;
    for (const ParameterDescription* const description : allDescriptions(shipped())) {
        types.insert(description->type);
        for (const auto& entry : description->attributes)
            attributes.insert(entry.first);
    }
    EXPECT_EQ(types.size(), 7u);
    for (const wchar_t* const name : {L"type", L"min", L"max", L"step", L"base", L"default"})
        EXPECT_TRUE(attributes.contains(name)) << testing::PrintToString(name);
}

TEST_F(ShippedCatalogue, ParametersWhoseValuesAreShownInWordsAreDescribed)
{
    EXPECT_EQ(shipped().parameters.at(L"DP_MODE").type, ParameterDescription::Type::Bool);
    for (const wchar_t* const value : {L"0", L"1", L"2", L"3", L"4"})
        EXPECT_TRUE(shipped().parameters.at(L"soft_entry").accepts(value));
    for (const wchar_t* const value : {L"0", L"1", L"2", L"3"})
        EXPECT_TRUE(shipped().parameters.at(L"busparam").accepts(value));
    for (const wchar_t* const value : {L"0", L"1"})
        EXPECT_TRUE(shipped().parameters.at(L"subnet_typ").accepts(value));
}

TEST_F(ShippedCatalogue, ABoardCanNarrowWhatAProtocolAllows)
{
    EXPECT_TRUE(shipped().describe(L"*TVRA020", L"MPI", L"baudrate")->accepts(L"12000000"));
    EXPECT_FALSE(shipped().describe(L"*TVRA050", L"MPI", L"baudrate")->accepts(L"12000000"));
    EXPECT_TRUE(shipped().describeForProtocol(L"MPI", L"baudrate")->accepts(L"12000000"));
}

TEST_F(ShippedCatalogue, CurrentLogicalNameIsOneOfTheLogicalNames)
{
    const std::wstring* const current = find(shipped().specialValues, L"DCFG_CurrentLogName");
    ASSERT_NE(current, nullptr);
    EXPECT_TRUE(shipped().logicalNames.contains(*current));
}

TEST_F(ShippedCatalogue, ProtocolPathsNeedAtMostFiveParts)
{
    const auto depth = [](const auto& self, const catalogue::Node& node) -> int {
        int deepest = 0;
        for (const auto& entry : node.keys)
            deepest = std::max(deepest, self(self, entry.second));
        return deepest + 1;
    };
    for (const auto& [name, protocol] : shipped().protocols)
        EXPECT_LE(depth(depth, protocol.tree), 5) << testing::PrintToString(name);
}
