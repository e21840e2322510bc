// The three functions that a module exports, with the platform's plain calling convention and C names. A host calls
// kInitDllName after it has loaded the file (where the platform doesn't do so itself) and kExitDllName before it lets
// go; both are optional to call. The factory that kGetPluginFactoryName gives carries one reference that belongs to the
// caller.
#pragma once

namespace tessera {

struct IModuleFactory;

using GetPluginFactoryFunction = IModuleFactory* (*)();
using InitDllFunction = bool (*)();
using ExitDllFunction = bool (*)();

inline constexpr char kGetPluginFactoryName[] = "GetPluginFactory";
inline constexpr char kInitDllName[] = "InitDll";
inline constexpr char kExitDllName[] = "ExitDll";

// The category of classes that are created once per process and driven through IPlugin.
inline constexpr char kServiceCategory[] = "Service";

} // namespace tessera
