/* vhid.sys: a HID minidriver for Wine whose devices are controlled by a test program (see vhid.h). Devices
 * are root-enumerated; vendor and product ID come from the device's ID. */
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
