#include "window/InstanceOrder.h"

#include <windows.h>

namespace InstanceOrder {

namespace {

struct Order {
    volatile LONG issued; // numbers given out
    volatile LONG newest; // the highest number that still wants the place, 0 for none
};

// Zeros at first. Only administrators may make or open it:
// https://learn.microsoft.com/windows/win32/termserv/kernel-object-namespaces
Order *mapOrder() {
    // Both stay until the process ends: with its last handle the memory would lose its name.
    const HANDLE memory = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Order),
                                             L"Global\\{45A8C662-65D7-4679-801E-604A2DF76732}.order");
    return memory ? static_cast<Order *>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(Order)))
                  : nullptr;
}

Order *order() {
    static Order *const shared = mapOrder();
    return shared;
}

LONG ownNumber = 0;

} // namespace

void askForPlace() {
    if (!order())
        return;
    ownNumber = InterlockedIncrement(&order()->issued);
    LONG newest = order()->newest;
    while (newest < ownNumber) {
        const LONG before = InterlockedCompareExchange(&order()->newest, ownNumber, newest);
        if (before == newest)
            break;
        newest = before;
    }
}

void withdraw() {
    if (ownNumber != 0)
        InterlockedCompareExchange(&order()->newest, 0, ownNumber);
}

bool newerAsked() {
    return order() && order()->newest > ownNumber;
}

} // namespace InstanceOrder
