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

static void setHoldWrites(BOOLEAN hold) {
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.holdWrites = hold;
    KeReleaseSpinLock(&driver.lock, irql);
    if (!hold)
        releaseHeldWrites(STATUS_SUCCESS);
}

static void reset(void) {
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.written.count = 0;
    driver.holdWrites = FALSE;
    KeReleaseSpinLock(&driver.lock, irql);
    releaseHeldWrites(STATUS_CANCELLED);
}

static NTSTATUS control(PIRP irp) {
    const PIO_STACK_LOCATION stack = IoGetCurrentIrpStackLocation(irp);
    const ULONG inLength = stack->Parameters.DeviceIoControl.InputBufferLength;
    const ULONG outLength = stack->Parameters.DeviceIoControl.OutputBufferLength;
    void *buffer = irp->AssociatedIrp.SystemBuffer;
    ULONG length = 0;
    KIRQL irql;

    switch (stack->Parameters.DeviceIoControl.IoControlCode) {
    case VHID_IOCTL_INPUT:
        if (inLength < sizeof(struct VhidReport))
            return complete(irp, STATUS_INVALID_PARAMETER, 0);
        pushInput(buffer);
        break;
    case VHID_IOCTL_NEXT_WRITE:
        if (outLength < (length = sizeof(struct VhidReport)))
            return complete(irp, STATUS_INVALID_PARAMETER, 0);
        KeAcquireSpinLock(&driver.lock, &irql);
        *(struct VhidReport *)buffer = takeReport(&driver.written);
        KeReleaseSpinLock(&driver.lock, irql);
        break;
    case VHID_IOCTL_HOLD_WRITES:
        if (inLength < sizeof(ULONG))
            return complete(irp, STATUS_INVALID_PARAMETER, 0);
        setHoldWrites(*(const ULONG *)buffer != 0);
        break;
    case VHID_IOCTL_COUNTERS:
        if (outLength < (length = sizeof driver.counters))
            return complete(irp, STATUS_INVALID_PARAMETER, 0);
        KeAcquireSpinLock(&driver.lock, &irql);
        memcpy(buffer, &driver.counters, length);
        KeReleaseSpinLock(&driver.lock, irql);
        break;
    case VHID_IOCTL_RESET:
        reset();
        break;
    default:
        return complete(irp, STATUS_NOT_SUPPORTED, 0);
    }
    return complete(irp, STATUS_SUCCESS, length);
}

NTSTATUS NTAPI hook(PDEVICE_OBJECT device, PIRP irp) {
    const UCHAR major = IoGetCurrentIrpStackLocation(irp)->MajorFunction;

    if (device == driver.control)
        return major == IRP_MJ_DEVICE_CONTROL ? control(irp) : complete(irp, STATUS_SUCCESS, 0);
    if (major == IRP_MJ_CREATE)
        InterlockedIncrement((LONG *)&driver.counters.openHandles);
    if (major == IRP_MJ_CLOSE)
        InterlockedDecrement((LONG *)&driver.counters.openHandles);
    if (major == IRP_MJ_WRITE && holdWrite(irp))
        return STATUS_PENDING;
    return driver.classDispatch[major](device, irp);
}
