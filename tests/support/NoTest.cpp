// The program that owns the precompiled headers of the tests. It does nothing.
int main() {}
