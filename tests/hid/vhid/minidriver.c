/* The side towards the HID class driver: descriptors, reports, arrival and removal. */
#include "driver.h"

static struct VirtualDevice *virtualDevice(PDEVICE_OBJECT functionDevice) {
    return ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->MiniDeviceExtension;
}

/* Vendor-defined collection, report ID 2: input, output and feature reports of 64 bytes. */
static const UCHAR receiverDescriptor[] = {
    0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01,       /* usage page FF00, usage 1, application collection */
    0x85, 0x02, 0x15, 0x00, 0x26, 0xFF, 0x00,       /* report ID 2, logical range 0..255 */
    0x75, 0x08, 0x95, 0x40,                         /* 64 fields of 8 bits */
    0x09, 0x02, 0x81, 0x02, 0x09, 0x03, 0x91, 0x02, /* input, output */
    0x09, 0x04, 0xB1, 0x02, 0xC0,                   /* feature, end of collection */
};

/* The physical device's ID, "ROOT\VID_040B&PID_F779&MI_03"; from ExAllocatePool. */
static NTSTATUS queryDeviceId(PDEVICE_OBJECT physical, WCHAR **id) {
    IO_STATUS_BLOCK result = {0};
    PIO_STACK_LOCATION stack;
    KEVENT event;
    PIRP irp;

    KeInitializeEvent(&event, NotificationEvent, FALSE);
    if (!(irp = IoBuildSynchronousFsdRequest(IRP_MJ_PNP, physical, NULL, 0, NULL, &event, &result)))
        return STATUS_NO_MEMORY;
    irp->IoStatus.Status = STATUS_NOT_SUPPORTED;
    stack = IoGetNextIrpStackLocation(irp);
    stack->MinorFunction = IRP_MN_QUERY_ID;
    stack->Parameters.QueryId.IdType = BusQueryDeviceID;
    if (IoCallDriver(physical, irp) == STATUS_PENDING)
        KeWaitForSingleObject(&event, Executive, KernelMode, FALSE, NULL);
    *id = (WCHAR *)result.Information;
    return result.Status;
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
    WCHAR *id;
    KIRQL irql;

    (void)object;
    if ((status = queryDeviceId(physical, &id)))
        return status;
    memset(device, 0, sizeof *device);
    device->vendorId = numberAfter(id, L"VID_");
    device->productId = numberAfter(id, L"PID_");
    ExFreePool(id);

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.device = device;
    KeReleaseSpinLock(&driver.lock, irql);
    return STATUS_SUCCESS;
}

/* A removal waits for the class driver's reading thread, which waits for its read. */
static void endReads(struct VirtualDevice *device) {
    KIRQL irql;
    PIRP read;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (driver.device == device)
        driver.device = NULL;
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

static NTSTATUS fillRead(PIRP irp, const struct VhidReport *report) {
    if (report->length > IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength)
        return complete(irp, STATUS_BUFFER_OVERFLOW, 0);
    memcpy(irp->UserBuffer, report->bytes, report->length);
    return complete(irp, STATUS_SUCCESS, report->length);
}

static NTSTATUS readReport(struct VirtualDevice *device, PIRP irp) {
    struct VhidReport report = {0};
    BOOLEAN removed;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    removed = device->removed;
    if (!removed && !(report = takeReport(&device->input)).length) {
        IoMarkIrpPending(irp);
        device->pendingRead = irp;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    if (removed)
        return complete(irp, STATUS_DELETE_PENDING, 0);
    return report.length ? fillRead(irp, &report) : STATUS_PENDING;
}

void pushInput(const struct VhidReport *report) {
    PIRP read = NULL;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    if (driver.device && driver.device->pendingRead) {
        read = driver.device->pendingRead;
        driver.device->pendingRead = NULL;
    } else if (driver.device) {
        putReport(&driver.device->input, report->bytes, report->length);
    }
    KeReleaseSpinLock(&driver.lock, irql);
    if (read)
        fillRead(read, report);
}

static NTSTATUS writeReport(PIRP irp) {
    const HID_XFER_PACKET *packet = irp->UserBuffer;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    putReport(&driver.written, packet->reportBuffer, packet->reportBufferLen);
    KeReleaseSpinLock(&driver.lock, irql);
    /* Wine's class driver takes the byte of the report ID off this count. */
    return complete(irp, STATUS_SUCCESS, packet->reportBufferLen + 1);
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
            .DescriptorList = {{HID_REPORT_DESCRIPTOR_TYPE, sizeof receiverDescriptor}}};
        return answer(irp, &descriptor, sizeof descriptor);
    }
    case IOCTL_HID_GET_REPORT_DESCRIPTOR:
        return answer(irp, receiverDescriptor, sizeof receiverDescriptor);
    case IOCTL_HID_READ_REPORT:
        return readReport(device, irp);
    case IOCTL_HID_WRITE_REPORT:
        return writeReport(irp);
    default:
        return complete(irp, STATUS_NOT_SUPPORTED, 0);
    }
}
