// A module that has no memory left for its factory.
extern "C" [[gnu::visibility("default")]] void* GetPluginFactory() {
    return nullptr;
}
