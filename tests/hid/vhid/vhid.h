/* Requests between the virtual HID driver (vhid.sys) and its controlling program, sent by DeviceIoControl to
 * the device \\.\VHidCtl. All requests return at once. */
#pragma once

#define VHID_LARGEST_REPORT 256
#define VHID_LARGEST_DESCRIPTOR 512

#define VHID_IOCTL(n) CTL_CODE(FILE_DEVICE_UNKNOWN, 0x800 + (n), METHOD_BUFFERED, FILE_ANY_ACCESS)

#define VHID_IOCTL_INPUT VHID_IOCTL(1) /* in: VhidInput */
#define VHID_IOCTL_NEXT_REPORT                                                                               \
    VHID_IOCTL(2) /* out: VhidReport, oldest first; of length 0 when there is none */
#define VHID_IOCTL_HOLD_WRITES VHID_IOCTL(3)    /* in: ULONG; 0 lets held writes go on */
#define VHID_IOCTL_SET_DESCRIPTOR VHID_IOCTL(4) /* in: bytes; for devices plugged from now on */
#define VHID_IOCTL_COUNTERS VHID_IOCTL(5)       /* out: VhidCounters */
#define VHID_IOCTL_RESET VHID_IOCTL(6)          /* back to the state after the driver's start */

/* An input, output or feature report; begins with its ID where the device uses IDs. */
struct VhidReport {
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT];
};

/* The device's next input report. Longer than the descriptor announces: the driver drops it, as a USB host
 * controller would. */
struct VhidInput {
    WCHAR device[64]; /* part of "ROOT\VID_...." in upper case */
    struct VhidReport report;
};

struct VhidCounters {
    ULONG opens; /* of all virtual devices, by any process */
    ULONG closes;
};
