/* The side towards the HID class driver: descriptors, reports, arrival and removal. */
#include "driver.h"

static struct VirtualDevice *virtualDevice(PDEVICE_OBJECT functionDevice) {
    return ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->MiniDeviceExtension;
}

/* Appends one of the physical device's IDs to text. */
static NTSTATUS appendId(PDEVICE_OBJECT physical, BUS_QUERY_ID_TYPE type, WCHAR *text, ULONG capacity) {
    IO_STATUS_BLOCK result = {0};
    PIO_STACK_LOCATION stack;
    KEVENT event;
    PIRP irp;
    WCHAR *id;

    KeInitializeEvent(&event, NotificationEvent, FALSE);
    if (!(irp = IoBuildSynchronousFsdRequest(IRP_MJ_PNP, physical, NULL, 0, NULL, &event, &result)))
        return STATUS_NO_MEMORY;
    irp->IoStatus.Status = STATUS_NOT_SUPPORTED;
    stack = IoGetNextIrpStackLocation(irp);
    stack->MinorFunction = IRP_MN_QUERY_ID;
    stack->Parameters.QueryId.IdType = type;
    if (IoCallDriver(physical, irp) == STATUS_PENDING)
        KeWaitForSingleObject(&event, Executive, KernelMode, FALSE, NULL);
    if (result.Status)
        return result.Status;
    id = (WCHAR *)result.Information;
    if (wcslen(text) + wcslen(id) < capacity)
        wcscat(text, id);
    ExFreePool(id);
    return STATUS_SUCCESS;
}

/* The four hexadecimal digits after a prefix such as "VID_"; 0 without them. */
static USHORT numberAfter(const WCHAR *id, const WCHAR *prefix) {
    const WCHAR *digit = wcsstr(id, prefix);
    USHORT number = 0;
    int i;

    for (i = 0; digit && i < 4; ++i) {
        const WCHAR c = digit[wcslen(prefix) + i];
        number = (USHORT)(number * 16 + (c >= 'A' ? c - 'A' + 10 : c - '0'));
    }
    return number;
}

NTSTATUS NTAPI addDevice(PDRIVER_OBJECT object, PDEVICE_OBJECT functionDevice) {
    struct VirtualDevice *device = virtualDevice(functionDevice);
    PDEVICE_OBJECT physical = ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->PhysicalDeviceObject;
    NTSTATUS status;
    KIRQL irql;

    (void)object;
    memset(device, 0, sizeof *device);
    if ((status = appendId(physical, BusQueryDeviceID, device->id, ARRAYSIZE(device->id) - 1)))
        return status;
    wcscat(device->id, L"\\");
    if ((status = appendId(physical, BusQueryInstanceID, device->id, ARRAYSIZE(device->id))))
        return status;
    device->vendorId = numberAfter(device->id, L"VID_");
    device->productId = numberAfter(device->id, L"PID_");

    KeAcquireSpinLock(&driver.lock, &irql);
    device->descriptorLength = driver.nextDescriptorLength;
    memcpy(device->descriptor, driver.nextDescriptor, device->descriptorLength);
    InsertTailList(&driver.devices, &device->entry);
    KeReleaseSpinLock(&driver.lock, irql);
    return STATUS_SUCCESS;
}

/* A removal waits for the class driver's reading thread, which waits for its read. */
static void endReads(struct VirtualDevice *device) {
    KIRQL irql;
    PIRP read;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (!device->removed)
        RemoveEntryList(&device->entry);
    device->removed = TRUE;
    read = device->pendingRead;
    device->pendingRead = NULL;
    KeReleaseSpinLock(&driver.lock, irql);
    if (read)
        complete(read, STATUS_DELETE_PENDING, 0);
}

NTSTATUS NTAPI pnp(PDEVICE_OBJECT functionDevice, PIRP irp) {
    const HID_DEVICE_EXTENSION *extension = functionDevice->DeviceExtension;
    const UCHAR minor = IoGetCurrentIrpStackLocation(irp)->MinorFunction;

    if (minor == IRP_MN_SURPRISE_REMOVAL || minor == IRP_MN_REMOVE_DEVICE) {
        endReads(virtualDevice(functionDevice));
        releaseHeldWrites(STATUS_DELETE_PENDING);
    }
    IoSkipCurrentIrpStackLocation(irp);
    return IoCallDriver(extension->NextDeviceObject, irp);
}

static NTSTATUS fillRead(PIRP irp, const struct Report *report) {
    if (report->length > IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength)
        return complete(irp, STATUS_BUFFER_OVERFLOW, 0);
    memcpy(irp->UserBuffer, report->bytes, report->length);
    return complete(irp, STATUS_SUCCESS, report->length);
}

static NTSTATUS readReport(struct VirtualDevice *device, PIRP irp) {
    struct Report report;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (device->removed) {
        KeReleaseSpinLock(&driver.lock, irql);
        return complete(irp, STATUS_DELETE_PENDING, 0);
    }
    if (device->count == 0) {
        IoMarkIrpPending(irp);
        device->pendingRead = irp;
        KeReleaseSpinLock(&driver.lock, irql);
        return STATUS_PENDING;
    }
    report = device->queue[device->first];
    device->first = (device->first + 1) % QUEUED_REPORTS;
    --device->count;
    KeReleaseSpinLock(&driver.lock, irql);
    return fillRead(irp, &report);
}

void pushInput(const struct VhidInput *input) {
    struct VirtualDevice *device = NULL;
    struct Report report = {.length = input->length};
    PLIST_ENTRY entry;
    PIRP read = NULL;
    KIRQL irql;

    memcpy(report.bytes, input->bytes, sizeof report.bytes);
    KeAcquireSpinLock(&driver.lock, &irql);
    for (entry = driver.devices.Flink; entry != &driver.devices; entry = entry->Flink) {
        struct VirtualDevice *candidate = CONTAINING_RECORD(entry, struct VirtualDevice, entry);
        if (wcsstr(candidate->id, input->device))
            device = candidate;
    }
    if (device && device->pendingRead) {
        read = device->pendingRead;
        device->pendingRead = NULL;
    } else if (device && device->count < QUEUED_REPORTS) {
        device->queue[(device->first + device->count++) % QUEUED_REPORTS] = report;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    if (read)
        fillRead(read, &report);
}

/* Reports from and to the host, whose packet carries buffer, length and ID. */
static NTSTATUS transfer(PIRP irp, enum VhidKind kind) {
    HID_XFER_PACKET *packet = irp->UserBuffer;
    NTSTATUS status;
    ULONG length;
    KIRQL irql;

    recordEvent(kind, packet->reportBuffer, kind == VHID_GET_FEATURE ? 0 : packet->reportBufferLen);
    if (takeFailure(kind, &status))
        return complete(irp, status, 0);
    length = packet->reportBufferLen;
    if (kind == VHID_GET_FEATURE) {
        KeAcquireSpinLock(&driver.lock, &irql);
        length = min(length, driver.feature.length);
        memcpy(packet->reportBuffer, driver.feature.bytes, length);
        KeReleaseSpinLock(&driver.lock, irql);
    }
    /* Wine's class driver takes 1 off the count of a written numbered report. */
    return complete(irp, STATUS_SUCCESS, length + (kind == VHID_WRITE && packet->reportId ? 1 : 0));
}

static NTSTATUS answer(PIRP irp, const void *bytes, ULONG length) {
    length = min(length, IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength);
    memcpy(irp->UserBuffer, bytes, length);
    return complete(irp, STATUS_SUCCESS, length);
}

NTSTATUS NTAPI internalControl(PDEVICE_OBJECT functionDevice, PIRP irp) {
    struct VirtualDevice *device = virtualDevice(functionDevice);

    switch (IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.IoControlCode) {
    case IOCTL_HID_GET_DEVICE_ATTRIBUTES: {
        const HID_DEVICE_ATTRIBUTES attributes = {.Size = sizeof attributes,
                                                  .VendorID = device->vendorId,
                                                  .ProductID = device->productId,
                                                  .VersionNumber = 0x0100};
        return answer(irp, &attributes, sizeof attributes);
    }
    case IOCTL_HID_GET_DEVICE_DESCRIPTOR: {
        const HID_DESCRIPTOR descriptor = {
            .bLength = sizeof descriptor,
            .bDescriptorType = HID_HID_DESCRIPTOR_TYPE,
            .bcdHID = 0x0111,
            .bNumDescriptors = 1,
            .DescriptorList = {{HID_REPORT_DESCRIPTOR_TYPE, device->descriptorLength}}};
        return answer(irp, &descriptor, sizeof descriptor);
    }
    case IOCTL_HID_GET_REPORT_DESCRIPTOR:
        return answer(irp, device->descriptor, device->descriptorLength);
    case IOCTL_HID_READ_REPORT:
        return readReport(device, irp);
    case IOCTL_HID_WRITE_REPORT:
        return transfer(irp, VHID_WRITE);
    case IOCTL_HID_SET_FEATURE:
        return transfer(irp, VHID_SET_FEATURE);
    case IOCTL_HID_GET_FEATURE:
        return transfer(irp, VHID_GET_FEATURE);
    default:
        return complete(irp, STATUS_NOT_SUPPORTED, 0);
    }
}
