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

void recordEvent(enum VhidKind kind, const UCHAR *bytes, ULONG length) {
    struct VhidEvent *event;
    KIRQL irql;

    length = min(length, VHID_LARGEST_REPORT);
    KeAcquireSpinLock(&driver.lock, &irql);
    if (driver.eventCount == QUEUED_EVENTS) {
        driver.firstEvent = (driver.firstEvent + 1) % QUEUED_EVENTS;
        --driver.eventCount;
    }
    event = &driver.events[(driver.firstEvent + driver.eventCount++) % QUEUED_EVENTS];
    event->kind = kind;
    event->length = length;
    memcpy(event->bytes, bytes, length);
    KeReleaseSpinLock(&driver.lock, irql);
}

BOOLEAN takeFailure(enum VhidKind kind, NTSTATUS *status) {
    BOOLEAN fails;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    fails = driver.failures[kind].count != 0;
    if (fails) {
        --driver.failures[kind].count;
        *status = driver.failures[kind].status;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    return fails;
}

void releaseHeldWrites(NTSTATUS failure) {
    PIRP irp;
    KIRQL irql;

    do {
        irp = NULL;
        KeAcquireSpinLock(&driver.lock, &irql);
        if (!IsListEmpty(&driver.heldWrites)) {
            irp = CONTAINING_RECORD(RemoveHeadList(&driver.heldWrites), IRP, Tail.Overlay.ListEntry);
            --driver.counters.heldWrites;
        }
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
        ++driver.counters.heldWrites;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    return held;
}

static void reset(void) {
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.eventCount = 0;
    driver.feature.length = 0;
    useReceiverDescriptor();
    driver.holdWrites = FALSE;
    memset(driver.failures, 0, sizeof driver.failures);
    KeReleaseSpinLock(&driver.lock, irql);
    releaseHeldWrites(STATUS_CANCELLED);
}

/* Copies out of the driver's state: the next event, or the counters. */
static ULONG copyOut(ULONG code, void *buffer) {
    struct VhidEvent *event = buffer;
    KIRQL irql;
    ULONG length;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (code == VHID_IOCTL_COUNTERS) {
        memcpy(buffer, &driver.counters, length = sizeof driver.counters);
    } else if (driver.eventCount) {
        memcpy(event, &driver.events[driver.firstEvent], length = sizeof *event);
        driver.firstEvent = (driver.firstEvent + 1) % QUEUED_EVENTS;
        --driver.eventCount;
    } else {
        memset(event, 0, length = sizeof *event);
    }
    KeReleaseSpinLock(&driver.lock, irql);
    return length;
}

static void copyIn(ULONG code, const void *buffer, ULONG length) {
    const struct VhidFailure *failure = buffer;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    switch (code) {
    case VHID_IOCTL_FAIL:
        driver.failures[failure->kind].status = failure->status;
        driver.failures[failure->kind].count = failure->count;
        break;
    case VHID_IOCTL_SET_DESCRIPTOR:
        driver.nextDescriptorLength = (USHORT)min(length, VHID_LARGEST_DESCRIPTOR);
        memcpy(driver.nextDescriptor, buffer, driver.nextDescriptorLength);
        break;
    case VHID_IOCTL_SET_FEATURE:
        memcpy(&driver.feature, buffer, sizeof driver.feature);
        break;
    case VHID_IOCTL_HOLD_WRITES:
        driver.holdWrites = *(const ULONG *)buffer != 0;
        break;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    if (code == VHID_IOCTL_HOLD_WRITES && !*(const ULONG *)buffer)
        releaseHeldWrites(STATUS_SUCCESS);
}

/* Least length of the request's input or output. */
static ULONG requiredLength(ULONG code) {
    switch (code) {
    case VHID_IOCTL_INPUT:
        return sizeof(struct VhidInput);
    case VHID_IOCTL_NEXT_EVENT:
        return sizeof(struct VhidEvent);
    case VHID_IOCTL_FAIL:
        return sizeof(struct VhidFailure);
    case VHID_IOCTL_HOLD_WRITES:
        return sizeof(ULONG);
    case VHID_IOCTL_SET_DESCRIPTOR:
        return 1;
    case VHID_IOCTL_SET_FEATURE:
        return sizeof(struct VhidFeature);
    case VHID_IOCTL_COUNTERS:
        return sizeof(struct VhidCounters);
    default:
        return 0;
    }
}

static NTSTATUS control(PIRP irp) {
    const PIO_STACK_LOCATION stack = IoGetCurrentIrpStackLocation(irp);
    const ULONG code = stack->Parameters.DeviceIoControl.IoControlCode;
    const BOOLEAN out = code == VHID_IOCTL_NEXT_EVENT || code == VHID_IOCTL_COUNTERS;
    const ULONG length = out ? stack->Parameters.DeviceIoControl.OutputBufferLength
                             : stack->Parameters.DeviceIoControl.InputBufferLength;
    void *buffer = irp->AssociatedIrp.SystemBuffer;

    if (length < requiredLength(code))
        return complete(irp, STATUS_INVALID_PARAMETER, 0);
    if (out)
        return complete(irp, STATUS_SUCCESS, copyOut(code, buffer));
    if (code == VHID_IOCTL_RESET)
        reset();
    else if (code == VHID_IOCTL_INPUT)
        pushInput(buffer);
    else
        copyIn(code, buffer, length);
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
