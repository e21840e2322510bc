// Saves settings and says so, unless it is killed on the way. The arguments: the folder, "one" or "split", the number
// that all values get, and the number of the system call at which the process ends, 0 for none.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "persistence/objects/DocumentFolders.h"
#include "support/FailingCalls.h"

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace tessera;

int main(int count, char** arguments) {
    if (count != 5) {
        return 2;
    }
    const test::DocumentFolders folders(arguments[1], arguments[1]);
    FGlobalDefaultPool& pool = *FGlobalDefaultPool::getInstance();
    pool.setFiles(std::string(arguments[2]) == "split" ? FGlobalDefaultPool::Files::split
                                                       : FGlobalDefaultPool::Files::one);
    pool.load();
    pool.restore();
    for (int i = 0; i < 10; ++i) {
        pool.setInt(("group " + std::to_string(i)).c_str(), "number", std::atoi(arguments[3]));
    }
    testing_support::FailingCalls::armToDie(std::atoi(arguments[4]));
    const bool saved = pool.save(FGlobalDefaultPool::RunSavers::no);
    const int calls = testing_support::FailingCalls::disarm();
    std::printf("%s %d\n", saved ? "saved" : "failed", calls);
    return saved ? 0 : 1;
}
