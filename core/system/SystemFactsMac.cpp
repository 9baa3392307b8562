#include "core/base/FileError.h"
#include "core/base/PropertyList.h"
#include "core/base/Text.h"
#include "core/system/SystemFacts.h"

#include <algorithm>

#include <CoreFoundation/CoreFoundation.h>
#include <sys/sysctl.h>

namespace tidemark::SystemFacts {

namespace {

/// Owns a reference that a Core Foundation function created or copied.
template <class Ref>
class Owned {
public:
    explicit Owned(Ref created) : ref(created) {}
    ~Owned() {
        if (ref)
            CFRelease(ref);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Ref get() const { return ref; }

private:
    Ref ref;
};

/// sysctlbyname(3): a text of fewer than 1,024 bytes, absent when the system has none.
std::optional<std::string> systemText(const char* name) {
    std::size_t size = 0;
    if (::sysctlbyname(name, nullptr, &size, nullptr, 0) != 0 || size < 1 || size > 1023)
        return std::nullopt;
    std::string text(size, '\0');
    if (::sysctlbyname(name, text.data(), &size, nullptr, 0) != 0)
        return std::nullopt;
    return textFromBytes(text.c_str());
}

std::string textOf(CFStringRef string) {
    const CFIndex length =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    if (!CFStringGetCString(string, text.data(), length + 1, kCFStringEncodingUTF8))
        return {};
    return text.c_str();
}

/// The resource values of one volume.
class VolumeValues {
public:
    explicit VolumeValues(const std::filesystem::path& path)
        : url(CFURLCreateFromFileSystemRepresentation(
              nullptr, reinterpret_cast<const UInt8*>(path.c_str()),
              static_cast<CFIndex>(path.native().size()), true)) {}

    bool reachable() const { return url.get() && CFURLResourceIsReachable(url.get(), nullptr); }
    std::optional<std::string> text(CFStringRef key) const {
        const Owned<CFTypeRef> value(copy(key));
        if (!value.get() || CFGetTypeID(value.get()) != CFStringGetTypeID())
            return std::nullopt;
        return textOf(static_cast<CFStringRef>(value.get()));
    }
    std::optional<std::int64_t> number(CFStringRef key) const {
        const Owned<CFTypeRef> value(copy(key));
        std::int64_t result = 0;
        if (!value.get() || CFGetTypeID(value.get()) != CFNumberGetTypeID()
            || !CFNumberGetValue(static_cast<CFNumberRef>(value.get()), kCFNumberSInt64Type,
                                 &result))
            return std::nullopt;
        return result;
    }
    std::optional<bool> flag(CFStringRef key) const {
        const Owned<CFTypeRef> value(copy(key));
        if (!value.get() || CFGetTypeID(value.get()) != CFBooleanGetTypeID())
            return std::nullopt;
        return CFBooleanGetValue(static_cast<CFBooleanRef>(value.get())) != 0;
    }

private:
    CFTypeRef copy(CFStringRef key) const {
        CFTypeRef value = nullptr;
        if (!url.get() || !CFURLCopyResourcePropertyForKey(url.get(), key, &value, nullptr))
            return nullptr;
        return value;
    }

    Owned<CFURLRef> url;
};

/// The system's own tool omits a patch number of 0; a version here always has three numbers.
std::string threeNumbers(std::string version) {
    while (std::ranges::count(version, '.') < 2)
        version += ".0";
    return version;
}

} // namespace

std::optional<OperatingSystemObservation> readOperatingSystem(const MachineFiles& machine) {
    if (!machine.isElsewhere())
        return collectOperatingSystem();
    try {
        const auto list = PropertyList::parse(machine.read(
            "/System/Library/CoreServices/SystemVersion.plist", PropertyList::maximumSize));
        const auto* facts = list ? list->as<PropertyList::Dictionary>() : nullptr;
        const auto* version =
            facts ? PropertyList::find<std::string>(*facts, "ProductVersion") : nullptr;
        if (!version)
            return std::nullopt;
        OperatingSystemObservation system{.version = threeNumbers(*version), .build = {}};
        if (const auto* build = PropertyList::find<std::string>(*facts, "ProductBuildVersion"))
            system.build = *build;
        return system;
    } catch (const FileError&) {
        return std::nullopt;
    }
}

OperatingSystemObservation collectOperatingSystem() {
    OperatingSystemObservation system;
    system.version = threeNumbers(systemText("kern.osproductversion").value_or("0"));
    system.build = systemText("kern.osversion");
    return system;
}

VolumeSpace volumeSpace(const std::filesystem::path& path) {
    const VolumeValues values(path);
    return {values.number(kCFURLVolumeAvailableCapacityKey),
            values.text(kCFURLVolumeUUIDStringKey)};
}

std::optional<bool> isMountRoot(const std::filesystem::path& path) {
    return VolumeValues(path).flag(kCFURLIsVolumeKey);
}

std::optional<VolumeContext> readVolumeContext(const std::filesystem::path& path) {
    const VolumeValues values(path);
    if (!values.reachable())
        return std::nullopt;
    VolumeContext context;
    context.name =
        values.text(kCFURLVolumeNameKey).value_or(textFromBytes(lastPathComponent(path.native())));
    context.capacity = values.number(kCFURLVolumeTotalCapacityKey);
    context.fileSystem = values.text(kCFURLVolumeLocalizedFormatDescriptionKey);
    context.local = values.flag(kCFURLVolumeIsLocalKey);
    context.internalDevice = values.flag(kCFURLVolumeIsInternalKey);
    context.readOnly = values.flag(kCFURLVolumeIsReadOnlyKey);
    return context;
}

} // namespace tidemark::SystemFacts
