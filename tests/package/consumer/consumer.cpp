// Creates a class of each layer by its name alone. Nothing here names the classes to the linker, so this finds out
// whether their records came along.
#include "foundation/object/ClassFactory.h"
#include "link/WireMessage.h"
#include "shell/hostapi/ISelection.h"

#include <cstdio>

int main() {
    for (const char* name :
         {"CmOrderedArray", "FMessage", "UIntValue", "FMemoryStream", "FNPath", "Attributes", "CmDate", "FModule"}) {
        tessera::ClassFactory* factory = tessera::ClassFactory::getInstance(true);
        auto* object = factory == nullptr ? nullptr : factory->createInstance(name);
        if (object == nullptr) {
            std::printf("no class %s\n", name);
            return 1;
        }
        std::printf("made a %s\n", name);
    }
    std::printf("%s\n", tessera::writeMessage({"openFile", "a"}).c_str());
    return 0;
}
