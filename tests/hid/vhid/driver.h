/* What the three files of the virtual HID driver share. One spin lock guards everything; no request is
 * completed and no other driver is called while it is held. */
#pragma once

#include "hidport.h"
#include "vhid.h"

#define QUEUED_REPORTS 32
#define QUEUED_EVENTS 64

struct Report {
    ULONG length;
    UCHAR bytes[VHID_LARGEST_REPORT];
};

/* One plugged device; lives in the extension of its function device object. */
struct VirtualDevice {
    LIST_ENTRY entry;
    WCHAR id[128]; /* "ROOT\VID_040B&PID_F779&MI_03\INSTANCE" */
    USHORT vendorId, productId;
    USHORT descriptorLength;
    UCHAR descriptor[VHID_LARGEST_DESCRIPTOR];
    BOOLEAN removed;
    PIRP pendingRead; /* the class driver's one read, waiting for an input report */
    ULONG first, count;
    struct Report queue[QUEUED_REPORTS];
};

struct Driver {
    KSPIN_LOCK lock;
    LIST_ENTRY devices;
    PDEVICE_OBJECT control;
    PDRIVER_DISPATCH classDispatch[IRP_MJ_MAXIMUM_FUNCTION + 1]; /* the HID class driver's */

    USHORT nextDescriptorLength;
    UCHAR nextDescriptor[VHID_LARGEST_DESCRIPTOR];
    struct Report feature;
    struct {
        NTSTATUS status;
        ULONG count;
    } failures[VHID_KINDS];

    BOOLEAN holdWrites;
    LIST_ENTRY heldWrites; /* IRPs by Tail.Overlay.ListEntry */
    struct VhidCounters counters;
    ULONG firstEvent, eventCount;
    struct VhidEvent events[QUEUED_EVENTS];
};

extern struct Driver driver;

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information);
void useReceiverDescriptor(void); /* for devices plugged from now on */

/* minidriver.c: the side towards the HID class driver */
NTSTATUS NTAPI addDevice(PDRIVER_OBJECT object, PDEVICE_OBJECT functionDevice);
NTSTATUS NTAPI pnp(PDEVICE_OBJECT functionDevice, PIRP irp);
NTSTATUS NTAPI internalControl(PDEVICE_OBJECT functionDevice, PIRP irp);
void pushInput(const struct VhidInput *input);

/* control.c: the side towards the controlling program */
NTSTATUS createControlDevice(PDRIVER_OBJECT object);
void deleteControlDevice(void);
NTSTATUS NTAPI hook(PDEVICE_OBJECT device, PIRP irp);
void recordEvent(enum VhidKind kind, const UCHAR *bytes, ULONG length);
/* Whether the next request of this kind is to fail, and how. */
BOOLEAN takeFailure(enum VhidKind kind, NTSTATUS *status);
/* Lets held writes go on to the class driver, or ends them with a failure. */
void releaseHeldWrites(NTSTATUS failure);
