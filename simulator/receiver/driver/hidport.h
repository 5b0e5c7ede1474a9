/* The HID class driver's interface for minidrivers, which mingw-w64's DDK headers leave out or spoil. Names
 * and values as in Microsoft's documentation of hidport.h and hidclass.h. */
#pragma once

#include <wdm.h>

#define HID_REVISION 1
#define HID_HID_DESCRIPTOR_TYPE 0x21
#define HID_REPORT_DESCRIPTOR_TYPE 0x22

#define HID_CODE(id, method) CTL_CODE(FILE_DEVICE_KEYBOARD, (id), (method), FILE_ANY_ACCESS)
#define IOCTL_HID_GET_DEVICE_DESCRIPTOR HID_CODE(0, METHOD_NEITHER)
#define IOCTL_HID_GET_REPORT_DESCRIPTOR HID_CODE(1, METHOD_NEITHER)
#define IOCTL_HID_READ_REPORT HID_CODE(2, METHOD_NEITHER)
#define IOCTL_HID_WRITE_REPORT HID_CODE(3, METHOD_NEITHER)
#define IOCTL_HID_GET_STRING HID_CODE(4, METHOD_NEITHER)
#define IOCTL_HID_GET_DEVICE_ATTRIBUTES HID_CODE(9, METHOD_NEITHER)
#define IOCTL_HID_GET_FEATURE HID_CODE(100, METHOD_OUT_DIRECT)
#define IOCTL_HID_SET_FEATURE HID_CODE(100, METHOD_IN_DIRECT)

typedef struct {
    ULONG Revision;
    PDRIVER_OBJECT DriverObject;
    PUNICODE_STRING RegistryPath;
    ULONG DeviceExtensionSize;
    BOOLEAN DevicesArePolled;
    UCHAR Reserved[3];
} HID_MINIDRIVER_REGISTRATION;

typedef struct {
    PDEVICE_OBJECT PhysicalDeviceObject;
    PDEVICE_OBJECT NextDeviceObject;
    PVOID MiniDeviceExtension;
} HID_DEVICE_EXTENSION;

typedef struct {
    ULONG Size;
    USHORT VendorID;
    USHORT ProductID;
    USHORT VersionNumber;
    USHORT Reserved[11];
} HID_DEVICE_ATTRIBUTES;

typedef struct {
    PUCHAR reportBuffer;
    ULONG reportBufferLen;
    UCHAR reportId;
} HID_XFER_PACKET;

#pragma pack(push, 1)
typedef struct {
    UCHAR bLength;
    UCHAR bDescriptorType;
    USHORT bcdHID;
    UCHAR bCountry;
    UCHAR bNumDescriptors;
    struct {
        UCHAR bReportType;
        USHORT wReportLength;
    } DescriptorList[1];
} HID_DESCRIPTOR;
#pragma pack(pop)

NTSTATUS NTAPI HidRegisterMinidriver(HID_MINIDRIVER_REGISTRATION *registration);
