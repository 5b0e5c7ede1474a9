/* Requests between the virtual HID driver (vhid.sys) and its controlling program, sent by DeviceIoControl to
 * the device \\.\VHidCtl. All requests return at once. */
#pragma once

#define VHID_LARGEST_REPORT 256
#define VHID_LARGEST_DESCRIPTOR 512

#define VHID_IOCTL(n) CTL_CODE(FILE_DEVICE_UNKNOWN, 0x800 + (n), METHOD_BUFFERED, FILE_ANY_ACCESS)

#define VHID_IOCTL_INPUT VHID_IOCTL(1)          /* in: VhidInput */
#define VHID_IOCTL_NEXT_EVENT VHID_IOCTL(2)     /* out: VhidEvent, VHID_NONE when there is none */
#define VHID_IOCTL_FAIL VHID_IOCTL(3)           /* in: VhidFailure */
#define VHID_IOCTL_HOLD_WRITES VHID_IOCTL(4)    /* in: ULONG; 0 lets held writes go on */
#define VHID_IOCTL_SET_DESCRIPTOR VHID_IOCTL(5) /* in: bytes; for devices plugged from now on */
#define VHID_IOCTL_SET_FEATURE VHID_IOCTL(6)    /* in: VhidFeature; what a feature report is answered with */
#define VHID_IOCTL_COUNTERS VHID_IOCTL(7)       /* out: VhidCounters */
#define VHID_IOCTL_RESET VHID_IOCTL(8)          /* back to the state after the driver's start */

enum VhidKind { VHID_NONE, VHID_WRITE, VHID_SET_FEATURE, VHID_GET_FEATURE, VHID_KINDS };

/* The device's next input report. Longer than the descriptor announces: the driver drops it, as a USB host
 * controller would. */
struct VhidInput {
    WCHAR device[64]; /* part of "ROOT\VID_....\INSTANCE" in upper case */
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT];
};

/* A request of the host, oldest first; reports begin with their ID. */
struct VhidEvent {
    ULONG kind;
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT];
};

/* The next `count` requests of this kind end with this NTSTATUS. */
struct VhidFailure {
    ULONG kind;
    LONG status;
    ULONG count;
};

struct VhidFeature {
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT]; /* without a report ID */
};

struct VhidCounters {
    ULONG opens; /* of all virtual devices, by any process */
    ULONG closes;
    ULONG heldWrites; /* now */
};
