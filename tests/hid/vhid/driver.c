/* vhid.sys: a HID minidriver for Wine whose devices are controlled by a test program (see vhid.h). Devices
 * are root-enumerated; vendor and product ID come from the device's ID. */
#include "driver.h"

struct Driver driver;

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information) {
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = information;
    IoCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

void putReport(struct ReportQueue *queue, const UCHAR *bytes, ULONG length) {
    struct VhidReport *report;

    if (queue->count == QUEUED_REPORTS)
        takeReport(queue);
    report = &queue->reports[(queue->first + queue->count++) % QUEUED_REPORTS];
    report->length = min(length, VHID_LARGEST_REPORT);
    memcpy(report->bytes, bytes, report->length);
}

struct VhidReport takeReport(struct ReportQueue *queue) {
    struct VhidReport report = {0};

    if (queue->count) {
        report = queue->reports[queue->first];
        queue->first = (queue->first + 1) % QUEUED_REPORTS;
        --queue->count;
    }
    return report;
}

static void NTAPI unload(PDRIVER_OBJECT object) {
    (void)object;
    deleteControlDevice();
}

NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT object, PUNICODE_STRING registryPath) {
    static const UCHAR hooked[] = {IRP_MJ_CREATE, IRP_MJ_CLOSE, IRP_MJ_WRITE, IRP_MJ_DEVICE_CONTROL};
    HID_MINIDRIVER_REGISTRATION registration = {.Revision = HID_REVISION,
                                                .DriverObject = object,
                                                .RegistryPath = registryPath,
                                                .DeviceExtensionSize = sizeof(struct VirtualDevice)};
    NTSTATUS status;
    ULONG i;

    KeInitializeSpinLock(&driver.lock);
    InitializeListHead(&driver.heldWrites);
    object->DriverExtension->AddDevice = addDevice;
    object->DriverUnload = unload;
    object->MajorFunction[IRP_MJ_PNP] = pnp;
    object->MajorFunction[IRP_MJ_INTERNAL_DEVICE_CONTROL] = internalControl;
    if ((status = HidRegisterMinidriver(&registration)))
        return status;

    /* The class driver has taken the dispatch table over; step in front of it for the control device and for
     * held writes. */
    for (i = 0; i < sizeof hooked; ++i) {
        driver.classDispatch[hooked[i]] = object->MajorFunction[hooked[i]];
        object->MajorFunction[hooked[i]] = hook;
    }
    return createControlDevice(object);
}
