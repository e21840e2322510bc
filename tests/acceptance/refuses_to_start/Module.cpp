// A module whose start function says no.
extern "C" [[gnu::visibility("default")]] bool InitDll() {
    return false;
}
extern "C" [[gnu::visibility("default")]] void* GetPluginFactory() {
    return nullptr;
}
