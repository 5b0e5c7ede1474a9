/* What the two files of the virtual HID driver share. One spin lock guards everything; no request is
 * completed and no other driver is called while it is held. */
#pragma once

#include "hidport.h"
#include "vhid.h"

#define QUEUED_REPORTS 64

/* One plugged device; lives in the extension of its function device object. */
struct VirtualDevice {
    LIST_ENTRY entry;
    WCHAR id[128]; /* "ROOT\VID_040B&PID_F779&MI_03" */
    USHORT vendorId, productId;
    USHORT descriptorLength;
    UCHAR descriptor[VHID_LARGEST_DESCRIPTOR];
    BOOLEAN removed;
    PIRP pendingRead; /* the class driver's one read, waiting for an input report */
    ULONG first, count;
    struct VhidReport queue[QUEUED_REPORTS];
};

struct Driver {
    KSPIN_LOCK lock;
    LIST_ENTRY devices;
    PDEVICE_OBJECT control;
    PDRIVER_DISPATCH classDispatch[IRP_MJ_MAXIMUM_FUNCTION + 1]; /* the HID class driver's */

    USHORT nextDescriptorLength;
    UCHAR nextDescriptor[VHID_LARGEST_DESCRIPTOR];
    struct VhidReport feature; /* as the host set it last */

    BOOLEAN holdWrites;
    LIST_ENTRY heldWrites; /* IRPs by Tail.Overlay.ListEntry */
    struct VhidCounters counters;
    ULONG firstReport, reportCount;
    struct VhidReport reports[QUEUED_REPORTS]; /* of the host */
};

extern struct Driver driver;

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information);
void useReceiverDescriptor(void); /* for devices plugged from now on */

void pushInput(const struct VhidInput *input); /* of the device to the host */

/* control.c: the side towards the controlling program */
NTSTATUS createControlDevice(PDRIVER_OBJECT object);
void deleteControlDevice(void);
NTSTATUS NTAPI hook(PDEVICE_OBJECT device, PIRP irp);
void recordReport(const UCHAR *bytes, ULONG length);
/* Lets held writes go on to the class driver, or ends them with a failure. */
void releaseHeldWrites(NTSTATUS failure);
