// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/Devices_p.h"
#include "platform/windows/DeviceWalk_p.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <memory>
#include <type_traits>

#include <qt_windows.h>

// Makes the headers below define their GUIDs and property keys in this file. Without initguid.h,
// they would only declare them.
#include <initguid.h>

#include <devguid.h>
#include <devpkey.h>
#include <setupapi.h>
#include <usbioctl.h>
#include <usbiodef.h>
#include <winioctl.h>

namespace Vyn::OvraBase::os {
namespace {

struct CloseFile {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, CloseFile>;

struct CloseDeviceSet {
    void operator()(HDEVINFO set) const { ::SetupDiDestroyDeviceInfoList(set); }
};
using DeviceSetHandle = std::unique_ptr<std::remove_pointer_t<HDEVINFO>, CloseDeviceSet>;

struct FreeHeap {
    void operator()(void *block) const { ::HeapFree(::GetProcessHeap(), 0, block); }
};
template<class T>
using HeapBlock = std::unique_ptr<T, FreeHeap>;

struct FreeLocal {
    void operator()(void *block) const { ::LocalFree(block); }
};

/// Returns an owner of \a handle. It is null for INVALID_HANDLE_VALUE, with which SetupAPI and
/// CreateFile report a failure.
template<class Owner, class Handle>
Owner owned(Handle handle)
{
    return Owner(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

FileHandle openFile(const char *path, DWORD access)
{
    return owned<FileHandle>(::CreateFileA(
        path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
}

/// Returns the bytes of a property. Returns none if the property cannot be read or its type is not
/// \a wanted.
std::vector<BYTE> property(
    HDEVINFO set, SP_DEVINFO_DATA &device, const DEVPROPKEY &key, DEVPROPTYPE wanted)
{
    std::vector<BYTE> bytes;
    DEVPROPTYPE type = DEVPROP_TYPE_EMPTY;
    DWORD size = 0;
    while (!::SetupDiGetDevicePropertyW(
        set, &device, &key, &type, bytes.data(), static_cast<DWORD>(bytes.size()), &size, 0)) {
        // A loop, because the value may grow between two calls. The test of the size makes sure
        // that the loop ends.
        if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || size <= bytes.size()) {
            return {};
        }
        bytes.resize(size);
    }
    bytes.resize(type == wanted ? size : 0);
    return bytes;
}

/// Returns the texts in \a bytes, which are zero-terminated. The last zero may be missing.
std::vector<QString> texts(const std::vector<BYTE> &bytes)
{
    std::vector<QString> list;
    const auto *at = reinterpret_cast<const wchar_t *>(bytes.data());
    const auto *const end = at + bytes.size() / sizeof(wchar_t);
    while (at != end && *at != L'\0') {
        const auto *stop = std::wmemchr(at, L'\0', static_cast<std::size_t>(end - at));
        stop = stop ? stop : end;
        list.push_back(QString::fromWCharArray(at, stop - at));
        at = stop == end ? end : stop + 1;
    }
    return list;
}

QString textProperty(HDEVINFO set, SP_DEVINFO_DATA &device, const DEVPROPKEY &key)
{
    const auto list = texts(property(set, device, key, DEVPROP_TYPE_STRING));
    return list.empty() ? QString() : list.front();
}

std::int32_t addressOf(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    const auto bytes = property(set, device, DEVPKEY_Device_Address, DEVPROP_TYPE_UINT32);
    std::int32_t address = 0;
    if (bytes.size() == sizeof address) {
        std::memcpy(&address, bytes.data(), sizeof address);
    }
    return address;
}

void fill(DeviceInfo &info, HDEVINFO set, SP_DEVINFO_DATA &device)
{
    info.description = textProperty(set, device, DEVPKEY_Device_DeviceDesc);
    info.deviceClass = textProperty(set, device, DEVPKEY_Device_Class);
    info.manufacturer = textProperty(set, device, DEVPKEY_Device_Manufacturer);
    info.name = textProperty(set, device, DEVPKEY_Device_FriendlyName);
    info.service = textProperty(set, device, DEVPKEY_Device_Service);
    info.pdo = textProperty(set, device, DEVPKEY_Device_PDOName);
    info.instanceId = textProperty(set, device, DEVPKEY_Device_InstanceId);
    info.parentInstanceId = textProperty(set, device, DEVPKEY_Device_Parent);
    info.address = addressOf(set, device);
}

/// Returns the name of the physical device object of the device \a instanceId, or an empty text.
QString pdoOf(const QString &instanceId)
{
    const auto set = owned<DeviceSetHandle>(::SetupDiCreateDeviceInfoList(nullptr, nullptr));
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    if (!set || !::SetupDiOpenDeviceInfoW(
                    set.get(), instanceId.toStdWString().c_str(), nullptr, 0, &device)) {
        return {};
    }
    return textProperty(set.get(), device, DEVPKEY_Device_PDOName);
}

/// Returns the USB generation of the connection at \a port of \a hub, or 0 if it is unknown.
std::int32_t usbNumberAt(HANDLE hub, ULONG port)
{
    // The structure ends in one entry for each open pipe. A device has at most 30 pipes.
    constexpr std::size_t kSize =
        sizeof(USB_NODE_CONNECTION_INFORMATION_EX) + 30 * sizeof(USB_PIPE_INFO);
    alignas(USB_NODE_CONNECTION_INFORMATION_EX) std::array<std::byte, kSize> buffer{};
    auto *const first = reinterpret_cast<USB_NODE_CONNECTION_INFORMATION_EX *>(buffer.data());
    first->ConnectionIndex = port;
    DWORD size = 0;
    const bool hasFirst = ::DeviceIoControl(hub, IOCTL_USB_GET_NODE_CONNECTION_INFORMATION_EX,
        buffer.data(), kSize, buffer.data(), kSize, &size, nullptr);

    // The first request knows no speed above high speed. The second exists from Windows 8 on.
    USB_NODE_CONNECTION_INFORMATION_EX_V2 second{};
    second.ConnectionIndex = port;
    second.Length = sizeof second;
    second.SupportedUsbProtocols.Usb300 = 1;
    const bool hasSecond = ::DeviceIoControl(hub, IOCTL_USB_GET_NODE_CONNECTION_INFORMATION_EX_V2,
        &second, sizeof second, &second, sizeof second, &size, nullptr);

    if (hasSecond && (second.Flags.DeviceIsOperatingAtSuperSpeedOrHigher ||
                         second.Flags.DeviceIsOperatingAtSuperSpeedPlusOrHigher)) {
        return 3;
    }
    if (!hasFirst) {
        return 0;
    }
    return first->Speed >= UsbHighSpeed ? 2 : 1;
}

std::int32_t usbNumberOf(const USBInfo &info)
{
    const QString parent = pdoOf(info.parentInstanceId);
    if (parent.isEmpty()) {
        return 0;
    }
    const QByteArray path = "\\\\?\\Global\\GLOBALROOT" + parent.toLocal8Bit();
    // The requests need no access right. With an access right, only an administrator could open the
    // hub.
    const FileHandle hub = openFile(path.constData(), 0);
    return hub ? usbNumberAt(hub.get(), static_cast<ULONG>(info.address)) : 0;
}

/// \a succeeded is the result of a system call that was made directly before. Returns 0 if it is
/// true. Otherwise returns the error of that call or, if the system set none, ERROR_GEN_FAILURE.
DWORD errorOf(BOOL succeeded)
{
    const DWORD code = succeeded ? ERROR_SUCCESS : ::GetLastError();
    return succeeded || code != ERROR_SUCCESS ? code : ERROR_GEN_FAILURE;
}

/// Sets \a device to the device of the interface \a entry. Returns false on failure. Only the
/// device is needed, but the call succeeds only with room for the path of the interface.
bool deviceOfInterface(HDEVINFO set, SP_DEVICE_INTERFACE_DATA &entry, SP_DEVINFO_DATA &device)
{
    DWORD size = 0;
    ::SetupDiGetDeviceInterfaceDetailA(set, &entry, nullptr, 0, &size, nullptr);
    if (size < sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_A)) {
        return false;
    }
    const HeapBlock<SP_DEVICE_INTERFACE_DETAIL_DATA_A> detail(
        static_cast<SP_DEVICE_INTERFACE_DETAIL_DATA_A *>(::HeapAlloc(::GetProcessHeap(), 0, size)));
    if (!detail) {
        return false;
    }
    detail->cbSize = sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_A);
    return ::SetupDiGetDeviceInterfaceDetailA(set, &entry, detail.get(), size, nullptr, &device);
}

/// Calls \a visit for each attached device of the setup class \a classOrInterface or, if
/// \a byInterface is true, with that interface. Returns 0, or the error if SetupAPI cannot list the
/// devices.
template<class Visit>
DWORD enumerateDevices(const GUID &classOrInterface, bool byInterface, Visit visit)
{
    const DWORD flags = DIGCF_PRESENT | (byInterface ? DIGCF_DEVICEINTERFACE : 0U);
    const auto set =
        owned<DeviceSetHandle>(::SetupDiGetClassDevsA(&classOrInterface, nullptr, nullptr, flags));
    if (!set) {
        return errorOf(FALSE);
    }

    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    if (byInterface) {
        SP_DEVICE_INTERFACE_DATA entry{};
        entry.cbSize = sizeof entry;
        walkDevices(
            [&](DWORD index) {
                return errorOf(::SetupDiEnumDeviceInterfaces(
                    set.get(), nullptr, &classOrInterface, index, &entry));
            },
            [&] {
                if (deviceOfInterface(set.get(), entry, device)) {
                    visit(set.get(), device);
                }
            });
    } else {
        walkDevices(
            [&](DWORD index) {
                return errorOf(::SetupDiEnumDeviceInfo(set.get(), index, &device));
            },
            [&] { visit(set.get(), device); });
    }
    return ERROR_SUCCESS;
}

DeviceSet<DeviceInfo> list(const GUID &classOrInterface, bool byInterface)
{
    DeviceSet<DeviceInfo> found;
    found.error =
        enumerateDevices(classOrInterface, byInterface, [&](HDEVINFO set, SP_DEVINFO_DATA &device) {
            fill(found.devices.emplace_back(), set, device);
        });
    return found;
}

} // namespace

DeviceSet<DeviceInfo> disks()
{
    return list(GUID_DEVINTERFACE_DISK, true);
}

DeviceSet<USBInfo> usbDevices()
{
    DeviceSet<USBInfo> found;
    found.error = enumerateDevices(
        GUID_DEVINTERFACE_USB_DEVICE, true, [&](HDEVINFO set, SP_DEVINFO_DATA &device) {
            USBInfo &info = found.devices.emplace_back();
            fill(info, set, device);
            info.children =
                texts(property(set, device, DEVPKEY_Device_Children, DEVPROP_TYPE_STRING_LIST));
            info.usbNumber = usbNumberOf(info);
        });
    return found;
}

DeviceSet<DeviceInfo> unknownDevices()
{
    return list(GUID_DEVCLASS_NODRIVER, false);
}

std::optional<EjectFailure> eject(const std::string &path)
{
    const FileHandle volume = openFile(path.c_str(), GENERIC_READ);
    if (!volume) {
        return EjectFailure{false, ::GetLastError()};
    }
    DWORD size = 0;
    if (!::DeviceIoControl(
            volume.get(), IOCTL_STORAGE_EJECT_MEDIA, nullptr, 0, nullptr, 0, &size, nullptr)) {
        return EjectFailure{true, ::GetLastError()};
    }
    return {};
}

std::string errorText(std::uint32_t code)
{
    char *text = nullptr;
    const DWORD size = ::FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<char *>(&text),
        0, nullptr);
    const std::unique_ptr<char, FreeLocal> owner(text);
    return text ? std::string(text, size) : std::string();
}

} // namespace Vyn::OvraBase::os
