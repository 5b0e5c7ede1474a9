/* The side towards the controlling program: the control device, and the hook in front of the class driver. */
#include "driver.h"

static UNICODE_STRING deviceName = RTL_CONSTANT_STRING(L"\\Device\\VHidCtl");
static UNICODE_STRING linkName = RTL_CONSTANT_STRING(L"\\DosDevices\\VHidCtl");

NTSTATUS createControlDevice(PDRIVER_OBJECT object) {
    NTSTATUS status;

    if ((status = IoCreateDevice(object, 0, &deviceName, FILE_DEVICE_UNKNOWN, 0, FALSE, &driver.control)))
        return status;
    driver.control->Flags &= ~(ULONG)DO_DEVICE_INITIALIZING;
    return IoCreateSymbolicLink(&linkName, &deviceName);
}

void deleteControlDevice(void) {
    IoDeleteSymbolicLink(&linkName);
    IoDeleteDevice(driver.control);
}

void recordReport(const UCHAR *bytes, ULONG length) {
    struct VhidReport *report;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    report = &driver.reports[(driver.firstReport + driver.reportCount) % QUEUED_REPORTS];
    report->length = min(length, VHID_LARGEST_REPORT);
    memcpy(report->bytes, bytes, report->length);
    if (driver.reportCount < QUEUED_REPORTS - 1)
        ++driver.reportCount;
    KeReleaseSpinLock(&driver.lock, irql);
}

void releaseHeldWrites(NTSTATUS failure) {
    PIRP irp;
    KIRQL irql;

    do {
        irp = NULL;
        KeAcquireSpinLock(&driver.lock, &irql);
        if (!IsListEmpty(&driver.heldWrites))
            irp = CONTAINING_RECORD(RemoveHeadList(&driver.heldWrites), IRP, Tail.Overlay.ListEntry);
        KeReleaseSpinLock(&driver.lock, irql);
        if (irp && failure)
            complete(irp, failure, 0);
        else if (irp)
            driver.classDispatch[IRP_MJ_WRITE](IoGetCurrentIrpStackLocation(irp)->DeviceObject, irp);
    } while (irp);
}

static BOOLEAN holdWrite(PIRP irp) {
    BOOLEAN held;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    held = driver.holdWrites;
    if (held) {
        IoMarkIrpPending(irp);
        InsertTailList(&driver.heldWrites, &irp->Tail.Overlay.ListEntry);
    }
    KeReleaseSpinLock(&driver.lock, irql);
    return held;
}

static void reset(void) {
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.reportCount = 0;
    driver.feature.length = 0;
    useReceiverDescriptor();
    driver.holdWrites = FALSE;
    KeReleaseSpinLock(&driver.lock, irql);
    releaseHeldWrites(STATUS_CANCELLED);
}

/* Copies out of the driver's state: the host's next report, or the counters. */
static ULONG copyOut(ULONG code, void *buffer) {
    struct VhidReport *report = buffer;
    ULONG length = sizeof *report;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (code == VHID_IOCTL_COUNTERS) {
        memcpy(buffer, &driver.counters, length = sizeof driver.counters);
    } else if (driver.reportCount) {
        *report = driver.reports[driver.firstReport];
        driver.firstReport = (driver.firstReport + 1) % QUEUED_REPORTS;
        --driver.reportCount;
    } else {
        report->length = 0;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    return length;
}

static void setDescriptor(const void *bytes, ULONG length) {
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.nextDescriptorLength = (USHORT)min(length, VHID_LARGEST_DESCRIPTOR);
    memcpy(driver.nextDescriptor, bytes, driver.nextDescriptorLength);
    KeReleaseSpinLock(&driver.lock, irql);
}

static void holdWrites(BOOLEAN hold) {
    driver.holdWrites = hold;
    if (!hold)
        releaseHeldWrites(STATUS_SUCCESS);
}

/* The controlling program, of one build with this driver, gives every request its struct. */
static NTSTATUS control(PIRP irp) {
    const PIO_STACK_LOCATION stack = IoGetCurrentIrpStackLocation(irp);
    const ULONG code = stack->Parameters.DeviceIoControl.IoControlCode;
    void *buffer = irp->AssociatedIrp.SystemBuffer;

    switch (code) {
    case VHID_IOCTL_NEXT_REPORT:
    case VHID_IOCTL_COUNTERS:
        return complete(irp, STATUS_SUCCESS, copyOut(code, buffer));
    case VHID_IOCTL_INPUT:
        pushInput(buffer);
        break;
    case VHID_IOCTL_HOLD_WRITES:
        holdWrites(*(const ULONG *)buffer != 0);
        break;
    case VHID_IOCTL_SET_DESCRIPTOR:
        setDescriptor(buffer, stack->Parameters.DeviceIoControl.InputBufferLength);
        break;
    case VHID_IOCTL_RESET:
        reset();
        break;
    }
    return complete(irp, STATUS_SUCCESS, 0);
}

NTSTATUS NTAPI hook(PDEVICE_OBJECT device, PIRP irp) {
    const PIO_STACK_LOCATION stack = IoGetCurrentIrpStackLocation(irp);
    const UCHAR major = stack->MajorFunction;

    if (device == driver.control) {
        if (major == IRP_MJ_DEVICE_CONTROL)
            return control(irp);
        return complete(irp, STATUS_SUCCESS, 0);
    }
    if (major == IRP_MJ_CREATE)
        InterlockedIncrement((LONG *)&driver.counters.opens);
    if (major == IRP_MJ_CLOSE)
        InterlockedIncrement((LONG *)&driver.counters.closes);
    if (major == IRP_MJ_WRITE && holdWrite(irp))
        return STATUS_PENDING;
    return driver.classDispatch[major](device, irp);
}
