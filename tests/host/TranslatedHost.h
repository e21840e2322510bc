// TranslatedHost: folders of the test's own for the program, and the host's translations in them. Afterwards the texts
// are English again.
#pragma once

#include "appservices/translation/ProgramFolders.h"
#include "appservices/translation/TranslationTable.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace tessera::host {

class TranslatedHost : public ::testing::Test {
protected:
    TranslatedHost() { std::filesystem::copy_file(TESX_HOST_TRANSLATION, folders_.module.path() / "translation.xml"); }
    // Without the file there are no translations.
    ~TranslatedHost() override {
        std::filesystem::remove(folders_.module.path() / "translation.xml");
        speak("us");
    }

    static void speak(const char* code) { TranslationTable::getInstance()->reload(code); }
    std::filesystem::path userFile(const std::string& name) const { return folders_.user.path() / name; }

    test::ProgramFolders folders_;
};

} // namespace tessera::host
