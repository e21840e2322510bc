// Saves a document and says so, unless it is killed on the way: the arguments are the folder, the number in the
// document, and the number of the system call at which the process ends.
#include "persistence/objects/DocumentFolders.h"
#include "persistence/objects/FObjectFiles.h"
#include "persistence/objects/TestNode.h"
#include "support/FailingCalls.h"

#include <cstdio>
#include <cstdlib>

using namespace tessera;

int main(int count, char** arguments) {
    if (count != 4) {
        return 2;
    }
    const test::DocumentFolders folders(arguments[1], arguments[1]);
    const auto node = test::newFamily(std::atoi(arguments[2]));
    testing_support::FailingCalls::armToDie(std::atoi(arguments[3]));
    const bool saved = FObjectFiles::saveObject("Mixer", "TestNode", *node);
    testing_support::FailingCalls::disarm();
    std::puts(saved ? "saved" : "failed");
    return saved ? 0 : 1;
}
