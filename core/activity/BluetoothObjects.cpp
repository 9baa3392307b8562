#include "core/activity/BluetoothObjects.h"

#include <algorithm>
#include <array>
#include <map>

namespace tidemark::BluetoothObjects {

namespace {

enum MajorClass : std::uint32_t {
    computer = 1,
    phone = 2,
    audioVideo = 4,
    input = 5,
    imaging = 6,
    wearable = 7,
    health = 9,
};

struct Category {
    std::uint16_t number;
    MajorClass majorClass;
};

constexpr auto categories = std::to_array<Category>({
    {0x01, phone},      {0x02, computer},   {0x03, wearable},   {0x05, audioVideo},
    {0x07, wearable},   {0x0a, audioVideo}, {0x0b, imaging},    {0x0c, health},
    {0x0d, health},     {0x0e, health},     {0x0f, input},      {0x10, health},
    {0x21, audioVideo}, {0x22, audioVideo}, {0x25, audioVideo}, {0x27, audioVideo},
    {0x29, audioVideo}, {0x31, health},     {0x32, health},     {0x34, health},
    {0x35, health},     {0x36, health},     {0x37, health},
});

std::uint32_t majorClass(const Device& device) {
    if (device.classOfDevice.value_or(0) != 0)
        return BluetoothDevice::majorClassOf(*device.classOfDevice);
    return majorClassOf(device.appearance.value_or(0));
}

bool belongsToOne(const Device& device, const std::vector<Adapter>& adapters) {
    return std::ranges::any_of(adapters, [&](const Adapter& adapter) {
        return device.path.starts_with(adapter.path + "/");
    });
}

} // namespace

std::uint32_t majorClassOf(std::uint16_t appearance) {
    const auto found = std::ranges::find(categories, appearance >> 6, &Category::number);
    return found == categories.end() ? 0 : std::uint32_t{found->majorClass};
}

std::optional<bool> isPoweredOn(const std::vector<Adapter>& adapters) {
    if (adapters.empty())
        return std::nullopt;
    return std::ranges::any_of(adapters, &Adapter::isPowered);
}

std::vector<BluetoothDevice> pairedDevices(const std::vector<Adapter>& adapters,
                                           const std::vector<Device>& devices) {
    std::map<std::string, BluetoothDevice> byAddress;
    for (const auto& device : devices) {
        if (!device.isPaired || device.address.empty() || !belongsToOne(device, adapters))
            continue;
        const BluetoothDevice seen{device.address, device.alias, majorClass(device),
                                   device.isConnected};
        const auto [known, isNew] = byAddress.try_emplace(device.address, seen);
        if (!isNew && device.isConnected)
            known->second = seen;
    }
    std::vector<BluetoothDevice> paired;
    for (auto& [address, device] : byAddress)
        paired.push_back(std::move(device));
    return paired;
}

} // namespace tidemark::BluetoothObjects
