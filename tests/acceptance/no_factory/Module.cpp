// A library that is no module at all.
extern "C" [[gnu::visibility("default")]] int somethingElse() {
    return 1;
}
