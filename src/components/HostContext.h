// The program's host context: the object that modules and services are given to ask for what the program offers.
//
// One for the process; not referenced: the program takes it back, by setting null, before the object goes. Main thread.
#pragma once

namespace tessera {

struct IBaseUnknown;

void setHostContext(IBaseUnknown* context);
// Null for none.
IBaseUnknown* getHostContext();

} // namespace tessera
