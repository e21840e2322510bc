#include "workflow/HostText.h"

#include "foundation/text/FString.h"
#include "shell/hostapi/IHostFile.h"

#include <array>

namespace tessera {

namespace {

std::u16string readText(IHostFile* file, void (IHostFile::*write)(char16_t*)) {
    if (file == nullptr) {
        return {};
    }
    std::array<char16_t, kHostPathUnits> buffer{};
    (file->*write)(buffer.data());
    buffer.back() = 0;
    return buffer.data();
}

} // namespace

std::string utf8Of(const char16_t* text) {
    FString converted(text);
    if (converted.isEmpty() || !converted.toMultiByte(CodePage::utf8)) {
        return {};
    }
    return {converted.text8(), static_cast<std::size_t>(converted.length())};
}

std::u16string wideOf(std::string_view utf8) {
    FString converted;
    if (utf8.empty() || !converted.assignUtf8(utf8.data(), static_cast<std::int32_t>(utf8.size()))) {
        return {};
    }
    return {converted.text16(), static_cast<std::size_t>(converted.length())};
}

std::u16string widePathOf(IHostFile* file) {
    return readText(file, &IHostFile::path);
}

std::string pathOf(IHostFile* file) {
    return utf8Of(widePathOf(file).c_str());
}

std::u16string nameOf(IHostFile* file) {
    return readText(file, &IHostFile::name);
}

} // namespace tessera
