// Which of several panels stays: the one that asked last for the others' place. The registry's request alone
// cannot tell, since a panel that is still being built would take a newer one's request for its own
// unanswered one. The order is kept in memory that the panels share for as long as one of them lives; where
// Windows gives none, the request decides alone.
#pragma once

namespace InstanceOrder {

// This process asks for the others' place from now on.
void askForPlace();
// It does not get as far as a window: the others need not make room.
void withdraw();
// Whether a panel has asked after this one, or at all when this one did not ask.
bool newerAsked();

} // namespace InstanceOrder
