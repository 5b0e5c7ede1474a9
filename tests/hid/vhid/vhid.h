/* Requests between the virtual HID driver (vhid.sys) and its controlling program, sent by DeviceIoControl to
 * the device \\.\VHidCtl. All requests return at once. */
#pragma once

#define VHID_LARGEST_REPORT 256

#define VHID_IOCTL(n) CTL_CODE(FILE_DEVICE_UNKNOWN, 0x800 + (n), METHOD_BUFFERED, FILE_ANY_ACCESS)

#define VHID_IOCTL_INPUT VHID_IOCTL(1)       /* in: VhidReport */
#define VHID_IOCTL_NEXT_WRITE VHID_IOCTL(2)  /* out: VhidReport, of length 0 when there is none */
#define VHID_IOCTL_HOLD_WRITES VHID_IOCTL(3) /* in: ULONG; 0 lets held writes go on */
#define VHID_IOCTL_COUNTERS VHID_IOCTL(4)    /* out: VhidCounters */
#define VHID_IOCTL_RESET VHID_IOCTL(5)       /* forgets written reports and held writes */

/* A report with its ID: the receiver's next input report, or the oldest one written to it. Of another length
 * than the descriptor announces: the class driver drops it, as a USB host controller would. */
struct VhidReport {
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT];
};

struct VhidCounters {
    ULONG openHandles; /* of virtual devices, in all processes */
    ULONG heldWrites;
};
