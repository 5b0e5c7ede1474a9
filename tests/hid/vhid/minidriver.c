/* vhid.sys: a HID minidriver for Wine whose devices are controlled by a test program (see vhid.h). Devices
 * are root-enumerated; vendor and product ID come from the device's ID. Here: the driver's start, and the
 * side towards the HID class driver: descriptors, reports, arrival and removal. */
#include "driver.h"

struct Driver driver;

/* Vendor-defined collection, report ID 2: input, output and feature reports of 64 bytes. */
static const UCHAR receiverDescriptor[] = {
    0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01,       /* usage page FF00, usage 1, application collection */
    0x85, 0x02, 0x15, 0x00, 0x26, 0xFF, 0x00,       /* report ID 2, logical range 0..255 */
    0x75, 0x08, 0x95, 0x40,                         /* 64 fields of 8 bits */
    0x09, 0x02, 0x81, 0x02, 0x09, 0x03, 0x91, 0x02, /* input, output */
    0x09, 0x04, 0xB1, 0x02, 0xC0,                   /* feature, end of collection */
};

void useReceiverDescriptor(void) {
    memcpy(driver.nextDescriptor, receiverDescriptor, sizeof receiverDescriptor);
    driver.nextDescriptorLength = sizeof receiverDescriptor;
}

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information) {
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = information;
    IoCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

static struct VirtualDevice *virtualDevice(PDEVICE_OBJECT functionDevice) {
    return ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->MiniDeviceExtension;
}

/* Copies the physical device's ID to text. */
static NTSTATUS queryDeviceId(PDEVICE_OBJECT physical, WCHAR *text, ULONG capacity) {
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
    if (result.Status)
        return result.Status;
    wcsncpy(text, (WCHAR *)result.Information, capacity - 1);
    ExFreePool((WCHAR *)result.Information);
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

static NTSTATUS NTAPI addDevice(PDRIVER_OBJECT object, PDEVICE_OBJECT functionDevice) {
    struct VirtualDevice *device = virtualDevice(functionDevice);
    PDEVICE_OBJECT physical = ((HID_DEVICE_EXTENSION *)functionDevice->DeviceExtension)->PhysicalDeviceObject;
    NTSTATUS status;
    KIRQL irql;

    (void)object;
    memset(device, 0, sizeof *device);
    if ((status = queryDeviceId(physical, device->id, ARRAYSIZE(device->id))))
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

static NTSTATUS NTAPI pnp(PDEVICE_OBJECT functionDevice, PIRP irp) {
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
    struct VhidReport report;
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
    const struct VhidReport *report = &input->report;
    PLIST_ENTRY entry;
    PIRP read = NULL;
    KIRQL irql;

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
        device->queue[(device->first + device->count++) % QUEUED_REPORTS] = *report;
    }
    KeReleaseSpinLock(&driver.lock, irql);
    if (read)
        fillRead(read, report);
}

/* A report of the host. overcount: Wine's class driver takes 1 off the count of a written numbered report. */
static NTSTATUS takeReport(PIRP irp, ULONG overcount) {
    const HID_XFER_PACKET *packet = irp->UserBuffer;

    recordReport(packet->reportBuffer, packet->reportBufferLen);
    return complete(irp, STATUS_SUCCESS, packet->reportBufferLen + (packet->reportId ? overcount : 0));
}

static NTSTATUS setFeature(PIRP irp) {
    const HID_XFER_PACKET *packet = irp->UserBuffer;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    driver.feature.length = min(packet->reportBufferLen, VHID_LARGEST_REPORT);
    memcpy(driver.feature.bytes, packet->reportBuffer, driver.feature.length);
    KeReleaseSpinLock(&driver.lock, irql);
    return takeReport(irp, 0);
}

static NTSTATUS getFeature(PIRP irp) {
    const HID_XFER_PACKET *packet = irp->UserBuffer;
    ULONG length;
    KIRQL irql;

    KeAcquireSpinLock(&driver.lock, &irql);
    length = min(packet->reportBufferLen, driver.feature.length);
    memcpy(packet->reportBuffer, driver.feature.bytes, length);
    KeReleaseSpinLock(&driver.lock, irql);
    return complete(irp, STATUS_SUCCESS, length);
}

static NTSTATUS answer(PIRP irp, const void *bytes, ULONG length) {
    length = min(length, IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl.OutputBufferLength);
    memcpy(irp->UserBuffer, bytes, length);
    return complete(irp, STATUS_SUCCESS, length);
}

static NTSTATUS NTAPI internalControl(PDEVICE_OBJECT functionDevice, PIRP irp) {
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
        return takeReport(irp, 1);
    case IOCTL_HID_SET_FEATURE:
        return setFeature(irp);
    case IOCTL_HID_GET_FEATURE:
        return getFeature(irp);
    default:
        return complete(irp, STATUS_NOT_SUPPORTED, 0);
    }
}

static void NTAPI unload(PDRIVER_OBJECT object) {
    (void)object;
    deleteControlDevice();
}

NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT object, PUNICODE_STRING registryPath) {
    static const UCHAR hooked[] = {IRP_MJ_CREATE, IRP_MJ_CLOSE, IRP_MJ_READ, IRP_MJ_WRITE,
                                   IRP_MJ_DEVICE_CONTROL};
    HID_MINIDRIVER_REGISTRATION registration = {.Revision = HID_REVISION,
                                                .DriverObject = object,
                                                .RegistryPath = registryPath,
                                                .DeviceExtensionSize = sizeof(struct VirtualDevice)};
    NTSTATUS status;
    ULONG i;

    KeInitializeSpinLock(&driver.lock);
    InitializeListHead(&driver.devices);
    InitializeListHead(&driver.heldWrites);
    useReceiverDescriptor();

    object->DriverExtension->AddDevice = addDevice;
    object->DriverUnload = unload;
    object->MajorFunction[IRP_MJ_PNP] = pnp;
    object->MajorFunction[IRP_MJ_INTERNAL_DEVICE_CONTROL] = internalControl;
    if ((status = HidRegisterMinidriver(&registration)))
        return status;

    /* The class driver has taken the dispatch table over; step in front of it for the control device, for
     * held writes and for what Wine's class driver does not offer. */
    for (i = 0; i < sizeof hooked; ++i) {
        driver.classDispatch[hooked[i]] = object->MajorFunction[hooked[i]];
        object->MajorFunction[hooked[i]] = hook;
    }
    return createControlDevice(object);
}
