// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/windows/DeviceWalk_p.h"
#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <QSettings>
#include <QUuid>

#include <gmock/gmock.h>

#include <array>
#include <span>

#include <qt_windows.h>

#include <initguid.h>

#include <devguid.h>
#include <devpkey.h>
#include <setupapi.h>
#include <usbiodef.h>
#include <winioctl.h>

// Missing from the header of MinGW-w64.
extern "C" DECLSPEC_IMPORT BOOL WINAPI SetupDiSetDevicePropertyW(
    HDEVINFO, PSP_DEVINFO_DATA, const DEVPROPKEY *, DEVPROPTYPE, const BYTE *, DWORD, DWORD);

namespace {

using namespace Vyn::OvraBase;
using namespace Qt::StringLiterals;
using namespace testing;

/// A device with a friendly name, which the system knows for as long as this lives.
class RegisteredDevice {
public:
    RegisteredDevice(const QString &name, const GUID &setupClass, const GUID &interfaceClass)
        : mSet(::SetupDiCreateDeviceInfoList(&setupClass, nullptr))
    {
        const std::wstring id = L"ROOT\\OVRABASE\\" + name.toStdWString();
        check(::SetupDiCreateDeviceInfoW(
            mSet, id.c_str(), &setupClass, nullptr, nullptr, 0, &mDevice));
        check(::SetupDiRegisterDeviceInfo(mSet, &mDevice, 0, nullptr, nullptr, nullptr));
        set(DEVPKEY_Device_FriendlyName, name.toStdWString() + L'\0');
        check(
            ::SetupDiCreateDeviceInterfaceA(mSet, &mDevice, &interfaceClass, nullptr, 0, nullptr));
        // What the system does when the driver has started the interface.
        QSettings link(
            uR"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\DeviceClasses\%1\##?#ROOT#OVRABASE#%2#%1\#\Control)"_s
                .arg(QUuid(interfaceClass).toString(), name),
            QSettings::NativeFormat);
        link.setValue(u"Linked"_s, 1);
    }
    Q_DISABLE_COPY_MOVE(RegisteredDevice)
    ~RegisteredDevice()
    {
        check(::SetupDiRemoveDevice(mSet, &mDevice));
        ::SetupDiDestroyDeviceInfoList(mSet);
    }

    /// \a value is an array, or a text that contains its final null.
    void set(const DEVPROPKEY &key, const auto &value, DEVPROPTYPE type = DEVPROP_TYPE_STRING)
    {
        const auto bytes = std::as_bytes(std::span(value));
        check(::SetupDiSetDevicePropertyW(mSet, &mDevice, &key, type,
            reinterpret_cast<const BYTE *>(bytes.data()), static_cast<DWORD>(bytes.size()), 0));
    }

private:
    static void check(BOOL succeeded) { EXPECT_TRUE(succeeded) << ::GetLastError(); }

    HDEVINFO mSet;
    SP_DEVINFO_DATA mDevice{sizeof(SP_DEVINFO_DATA), {}, 0, 0};
};

/// Walks over devices and returns the indices that were visited. \a answers has the answer for each
/// index; its last one is also the answer for every greater index.
std::vector<DWORD> visited(const std::vector<DWORD> &answers)
{
    std::vector<DWORD> indices;
    DWORD current = 0;
    os::walkDevices(
        [&](DWORD index) {
            current = index;
            return index < answers.size() ? answers[index] : answers.back();
        },
        [&] { indices.push_back(current); });
    return indices;
}

TEST(Devices, AWalkSkipsAFailingIndexAndEndsWhereThereAreNoMore)
{
    constexpr DWORD kBroken = 31;
    EXPECT_THAT(visited({kBroken, 0, kBroken, kBroken, 0, ERROR_NO_MORE_ITEMS, 0, kBroken}),
        ElementsAre(1U, 4U));

    // The count of failures in a row starts again after each device.
    std::vector<DWORD> answers(2 * os::kLongestGap + 1, kBroken);
    answers[os::kLongestGap - 1] = answers[2 * os::kLongestGap - 1] = 0;
    EXPECT_THAT(visited(answers), ElementsAre(os::kLongestGap - 1, 2 * os::kLongestGap - 1));
}

auto named(const QString &name, auto devices)
{
    std::erase_if(devices, [&](const auto &device) { return device.name != name; });
    return devices;
}

TEST(Devices, ADiskHasAllItsProperties)
{
    const QString description(5000, u'\u78c1'); // no fixed buffer holds it
    RegisteredDevice registered(u"DISK"_s, GUID_DEVCLASS_DISKDRIVE, GUID_DEVINTERFACE_DISK);
    registered.set(DEVPKEY_Device_DeviceDesc, description.toStdWString() + L'\0');
    registered.set(DEVPKEY_Device_Class, L"DiskDrive");
    registered.set(DEVPKEY_Device_Manufacturer, L"S\u00f6hne %2");
    registered.set(DEVPKEY_Device_Service, L"disk");
    registered.set(DEVPKEY_Device_PDOName, L"\\Device\\0000002a");
    registered.set(DEVPKEY_Device_InstanceId, L"ROOT\\OVRABASE\\DISK");
    registered.set(DEVPKEY_Device_Parent, L"HTREE\\ROOT\\0");
    registered.set(DEVPKEY_Device_Address, std::array{-2}, DEVPROP_TYPE_UINT32);

    EXPECT_EQ(named(u"DISK"_s, getDisksInfo()).at(0).toString(),
        u"PDO: <\\Device\\0000002a>\nInstance ID: <ROOT\\OVRABASE\\DISK>\n"
        "Device class: <DiskDrive>\nName: <DISK>\nDescription: <%1>\n"
        "Manufacturer: <S\u00f6hne %2>\nService: <disk>\n"
        "Parent Instance ID: <HTREE\\ROOT\\0>\nAddress: -2"_s.arg(description, u"%2"_s));
    EXPECT_THAT(named(u"DISK"_s, getUnknownDevicesInfo()), IsEmpty());
}

TEST(Devices, ADeviceWithoutADriverIsUnknownAndAPropertyOfAnotherTypeIsEmpty)
{
    RegisteredDevice registered(u"BARE"_s, GUID_DEVCLASS_NODRIVER, GUID_DEVINTERFACE_DISK);
    registered.set(DEVPKEY_Device_Manufacturer, std::array{7}, DEVPROP_TYPE_UINT32);
    registered.set(DEVPKEY_Device_Address, L"12");
    for (const auto &devices : {getDisksInfo(), getUnknownDevicesInfo()}) {
        EXPECT_THAT(named(u"BARE"_s, devices),
            ElementsAre(AllOf(Field(&DeviceInfo::manufacturer, QString()),
                Field(&DeviceInfo::pdo, QString()), Field(&DeviceInfo::address, 0))));
    }
}

TEST(Devices, AUsbDeviceHasItsChildrenAndNoNumberWithoutAHub)
{
    RegisteredDevice stick(u"STICK"_s, GUID_DEVCLASS_USB, GUID_DEVINTERFACE_USB_DEVICE);
    stick.set(DEVPKEY_Device_Parent, L"ROOT\\OVRABASE\\MISSING");
    stick.set(
        DEVPKEY_Device_Children, L"USBSTOR\\DISK\\1\0USBSTOR\\DISK\\2\0", DEVPROP_TYPE_STRING_LIST);
    stick.set(DEVPKEY_Device_PDOName, L"\\Device\\NoSuchHub");
    RegisteredDevice below(u"BELOW"_s, GUID_DEVCLASS_USB, GUID_DEVINTERFACE_USB_DEVICE);
    below.set(DEVPKEY_Device_Parent, L"ROOT\\OVRABASE\\STICK");

    const auto devices = getUSBInfo();
    EXPECT_THAT(named(u"STICK"_s, devices),
        ElementsAre(AllOf(Field(&USBInfo::usbNumber, 0),
            Field(&USBInfo::children, ElementsAre(u"USBSTOR\\DISK\\1"_s, u"USBSTOR\\DISK\\2"_s)))));
    EXPECT_THAT(named(u"BELOW"_s, devices),
        ElementsAre(AllOf(Field(&USBInfo::usbNumber, 0), Field(&USBInfo::children, IsEmpty()))));
    EXPECT_THAT(named(u"STICK"_s, getDisksInfo()), IsEmpty());
}

TEST(Devices, AVolumeThatOpensAndDoesNotEjectIsLogged)
{
    if (!::GetProcAddress(::GetModuleHandleA("ntdll"), "wine_get_version")) {
        GTEST_SKIP() << "NOT TESTED, because a real machine might eject its volume C:";
    }
    Vyn::Test::RecordedLog log;
    EXPECT_THROW(ejectUsbDrive('C'), Vyn::Exception::DriveUnmountException);
    EXPECT_THAT(log.take(),
        ElementsAre(FieldsAre(2, "Debug: WindowsUtils.cpp:156 Vyn::OvraBase::ejectUsbDrive()",
            StartsWith("Failed to eject volume: "))));
}

} // namespace
