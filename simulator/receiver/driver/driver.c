/* receiver.sys: a HID minidriver for Wine. Its devices are root-enumerated; vendor and product ID come from
 * the device's ID. A program plays a device's part through feature report 3, whose data is a whole report
 * with its ID: setting it sends an input report, getting it takes the oldest report written to the device
 * (zeros: none). */
#include "hidport.h"

#define REPORT_SIZE 65 /* with its ID */
#define QUEUED_REPORTS 64

struct ReportQueue {
    ULONG first, count;
    UCHAR reports[QUEUED_REPORTS][REPORT_SIZE];
};

/* Lives in the extension of its function device object. No request is completed while the lock is held. */
struct VirtualDevice {
    USHORT vendorId, productId;
    KSPIN_LOCK lock; /* for what follows */
    BOOLEAN removed;
    PIRP pendingRead; /* the class driver's one read, waiting for an input report */
    struct ReportQueue input, written;
};

/* Vendor-defined collection: reports of 64 bytes each way with ID 2, and feature report 3. The others are
 * there to be found: eight buttons as input, output and feature report 4, 5 and 6, and a single output
 * value 7. */
static const UCHAR reportDescriptor[] = {
    0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01,       /* usage page FF00, usage 1, application collection */
    0x15, 0x00, 0x26, 0xFF, 0x00, 0x75, 0x08,       /* logical range 0..255, fields of 8 bits */
    0x85, 0x02, 0x95, 0x40,                         /* report ID 2, 64 fields */
    0x09, 0x02, 0x81, 0x02, 0x09, 0x03, 0x91, 0x02, /* input, output */
    0x85, 0x03, 0x95, 0x41, 0x09, 0x04, 0xB1, 0x02, /* report ID 3, 65 fields, feature */
    0x85, 0x07, 0x95, 0x01, 0x09, 0x05, 0x91, 0x02, /* report ID 7, one field, output */
    0x05, 0x09, 0x25, 0x01, 0x75, 0x01, 0x95, 0x08, /* usage page of buttons, 0..1, eight fields of one bit */
    0x85, 0x04, 0x19, 0x01, 0x29, 0x08, 0x81, 0x02, /* report ID 4, buttons 1..8, input */
    0x85, 0x05, 0x19, 0x01, 0x29, 0x08, 0x91, 0x02, /* report ID 5, likewise, output */
    0x85, 0x06, 0x19, 0x01, 0x29, 0x08, 0xB1, 0x02, 0xC0, /* report ID 6, likewise, feature; the end */
};

static struct VirtualDevice *virtualDevice(PDEVICE_OBJECT functionDevice) {
    return ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->MiniDeviceExtension;
}

static NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information) {
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = information;
    IoCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

static NTSTATUS answer(PIRP irp, const void *bytes, ULONG length) {
    length = min(length, IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength);
    memcpy(irp->UserBuffer, bytes, length);
    return complete(irp, STATUS_SUCCESS, length);
}

/* With the lock held. A full queue drops the report. */
static void put(struct ReportQueue *queue, const UCHAR *report) {
    if (queue->count < QUEUED_REPORTS)
        memcpy(queue->reports[(queue->first + queue->count++) % QUEUED_REPORTS], report, REPORT_SIZE);
}

/* With the lock held. FALSE, and report unchanged, when there is none. */
static BOOLEAN take(struct ReportQueue *queue, UCHAR *report) {
    if (!queue->count)
        return FALSE;
    memcpy(report, queue->reports[queue->first], REPORT_SIZE);
    queue->first = (queue->first + 1) % QUEUED_REPORTS;
    --queue->count;
    return TRUE;
}

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

/* The hexadecimal number after a prefix such as L"VID_" that the ID is known to have. */
static USHORT numberAfter(const WCHAR *id, const WCHAR *prefix) {
    return (USHORT)wcstoul(wcsstr(id, prefix) + wcslen(prefix), NULL, 16);
}

static NTSTATUS NTAPI addDevice(PDRIVER_OBJECT object, PDEVICE_OBJECT functionDevice) {
    struct VirtualDevice *device = virtualDevice(functionDevice);
    PDEVICE_OBJECT physical = ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->PhysicalDeviceObject;
    NTSTATUS status;
    WCHAR *id;

    (void)object;
    if ((status = queryDeviceId(physical, &id)))
        return status;
    memset(device, 0, sizeof *device);
    device->vendorId = numberAfter(id, L"VID_");
    device->productId = numberAfter(id, L"PID_");
    ExFreePool(id);
    KeInitializeSpinLock(&device->lock);
    return STATUS_SUCCESS;
}

static NTSTATUS NTAPI pnp(PDEVICE_OBJECT functionDevice, PIRP irp) {
    struct VirtualDevice *device = virtualDevice(functionDevice);
    const UCHAR minor = IoGetCurrentIrpStackLocation(irp)->MinorFunction;
    PIRP read = NULL;
    KIRQL irql;

    if (minor == IRP_MN_SURPRISE_REMOVAL || minor == IRP_MN_REMOVE_DEVICE) {
        KeAcquireSpinLock(&device->lock, &irql);
        device->removed = TRUE;
        read = device->pendingRead;
        device->pendingRead = NULL;
        KeReleaseSpinLock(&device->lock, irql);
        /* Wine 8's class driver ends its reading thread when the read has ended. Wine 10's, which does not
         * pass a surprise removal on, has ended it by now: the read's status would be written to a stack that
         * is gone. */
        if (read && minor == IRP_MN_SURPRISE_REMOVAL)
            complete(read, STATUS_DELETE_PENDING, 0);
    }
    IoSkipCurrentIrpStackLocation(irp);
    return IoCallDriver(((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->NextDeviceObject, irp);
}

static NTSTATUS readInput(struct VirtualDevice *device, PIRP irp) {
    NTSTATUS status = STATUS_SUCCESS;
    UCHAR report[REPORT_SIZE];
    KIRQL irql;

    KeAcquireSpinLock(&device->lock, &irql);
    if (device->removed) {
        status = STATUS_DELETE_PENDING;
    } else if (!take(&device->input, report)) {
        IoMarkIrpPending(irp);
        device->pendingRead = irp;
        status = STATUS_PENDING;
    }
    KeReleaseSpinLock(&device->lock, irql);
    if (status == STATUS_SUCCESS)
        return answer(irp, report, REPORT_SIZE);
    return status == STATUS_PENDING ? status : complete(irp, status, 0);
}

static void sendInput(struct VirtualDevice *device, const UCHAR *report) {
    PIRP read;
    KIRQL irql;

    KeAcquireSpinLock(&device->lock, &irql);
    read = device->pendingRead;
    device->pendingRead = NULL;
    if (!read)
        put(&device->input, report);
    KeReleaseSpinLock(&device->lock, irql);
    if (read)
        answer(read, report, REPORT_SIZE);
}

/* Output reports, and the feature report. The packet's buffer begins with the report's ID. */
static NTSTATUS transfer(struct VirtualDevice *device, PIRP irp, ULONG code) {
    const HID_XFER_PACKET *packet = irp->UserBuffer;
    const BOOLEAN isFeature = code != IOCTL_HID_WRITE_REPORT;
    UCHAR *const report = packet->reportBuffer + isFeature;
    KIRQL irql;

    if (packet->reportBufferLen < REPORT_SIZE + (ULONG)isFeature)
        return complete(irp, STATUS_INVALID_PARAMETER, 0);
    if (code == IOCTL_HID_SET_FEATURE) {
        sendInput(device, report);
    } else {
        KeAcquireSpinLock(&device->lock, &irql);
        if (code == IOCTL_HID_WRITE_REPORT)
            put(&device->written, report);
        else if (!take(&device->written, report))
            memset(report, 0, REPORT_SIZE);
        KeReleaseSpinLock(&device->lock, irql);
    }
    /* Wine's class driver takes the byte of the report ID off the count of a written report. */
    return complete(irp, STATUS_SUCCESS, packet->reportBufferLen + !isFeature);
}

static NTSTATUS NTAPI internalControl(PDEVICE_OBJECT functionDevice, PIRP irp) {
    struct VirtualDevice *device = virtualDevice(functionDevice);
    const ULONG code = IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.IoControlCode;

    switch (code) {
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
            .DescriptorList = {{HID_REPORT_DESCRIPTOR_TYPE, sizeof reportDescriptor}}};
        return answer(irp, &descriptor, sizeof descriptor);
    }
    case IOCTL_HID_GET_REPORT_DESCRIPTOR:
        return answer(irp, reportDescriptor, sizeof reportDescriptor);
    case IOCTL_HID_GET_STRING: /* Wine 10 starts no device without a serial number. */
        return answer(irp, L"1", sizeof L"1");
    case IOCTL_HID_READ_REPORT:
        return readInput(device, irp);
    case IOCTL_HID_WRITE_REPORT:
    case IOCTL_HID_GET_FEATURE:
    case IOCTL_HID_SET_FEATURE:
        return transfer(device, irp, code);
    default:
        return complete(irp, STATUS_NOT_SUPPORTED, 0);
    }
}

NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT object, PUNICODE_STRING registryPath) {
    HID_MINIDRIVER_REGISTRATION registration = {.Revision = HID_REVISION,
                                                .DriverObject = object,
                                                .RegistryPath = registryPath,
                                                .DeviceExtensionSize = sizeof(struct VirtualDevice)};

    object->DriverExtension->AddDevice = addDevice;
    object->MajorFunction[IRP_MJ_PNP] = pnp;
    object->MajorFunction[IRP_MJ_INTERNAL_DEVICE_CONTROL] = internalControl;
    return HidRegisterMinidriver(&registration);
}
