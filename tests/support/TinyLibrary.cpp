// A library with one symbol, for whoever loads libraries.
extern "C" [[gnu::visibility("default")]] int tinyLibraryAnswer() {
    return 42;
}
