// What is done about a message of the peer.
#pragma once

#include "link/WireMessage.h"

namespace tessera {

class LinkSocket;

// Runs the verb's action; an unknown verb has none. A message with too few fields throws as fieldText and fieldNumber
// do. Answers go out on the link. Main thread.
void handleMessage(const FieldList& fields, LinkSocket& link);

} // namespace tessera
