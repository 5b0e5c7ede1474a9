/* What the three files of the virtual HID driver share. One spin lock guards everything; no request is
 * completed and no other driver is called while it is held. */
#pragma once

#include "hidport.h"
#include "vhid.h"

#define QUEUED_REPORTS 64

struct ReportQueue {
    ULONG first, count;
    struct VhidReport reports[QUEUED_REPORTS];
};

/* One plugged device; lives in the extension of its function device object. */
struct VirtualDevice {
    USHORT vendorId, productId;
    BOOLEAN removed;
    PIRP pendingRead; /* the class driver's one read, waiting for an input report */
    struct ReportQueue input;
};

struct Driver {
    KSPIN_LOCK lock;
    PDEVICE_OBJECT control;
    PDRIVER_DISPATCH classDispatch[IRP_MJ_MAXIMUM_FUNCTION + 1]; /* the HID class driver's */

    struct VirtualDevice *device; /* the one plugged last, where it is still there */
    struct ReportQueue written;
    BOOLEAN holdWrites;
    LIST_ENTRY heldWrites; /* IRPs by Tail.Overlay.ListEntry */
    struct VhidCounters counters;
};

extern struct Driver driver;

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information);

/* With the lock held. A full queue loses its oldest report; an empty one gives a report of length 0. */
void putReport(struct ReportQueue *queue, const UCHAR *bytes, ULONG length);
struct VhidReport takeReport(struct ReportQueue *queue);

/* minidriver.c: the side towards the HID class driver */
NTSTATUS NTAPI addDevice(PDRIVER_OBJECT object, PDEVICE_OBJECT functionDevice);
NTSTATUS NTAPI pnp(PDEVICE_OBJECT functionDevice, PIRP irp);
NTSTATUS NTAPI internalControl(PDEVICE_OBJECT functionDevice, PIRP irp);
void pushInput(const struct VhidReport *report);

/* control.c: the side towards the controlling program */
NTSTATUS createControlDevice(PDRIVER_OBJECT object);
void deleteControlDevice(void);
NTSTATUS NTAPI hook(PDEVICE_OBJECT device, PIRP irp);
/* Lets held writes go on to the class driver, or ends them with a failure. */
void releaseHeldWrites(NTSTATUS failure);
