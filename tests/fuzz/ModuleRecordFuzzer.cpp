// What is remembered of a module comes from the settings, which anybody may have edited. Each line of the input is a
// value of the group: "key=text", or "key#number". Whatever is read has whole identifiers and texts that end, and is
// the same once it has been written and read again; and a group that is read twice gives the same.
#include "appservices/defaults/FDefaults.h"
#include "components/ModuleRecord.h"
#include "foundation/text/FNumberScan.h"
#include "foundation/text/FString.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using tessera::ClassInfoWide;
using tessera::FDefaults;
using tessera::FString;
using tessera::FStringRef;
using tessera::ModuleRecord;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

FStringRef textOf(std::string_view text) {
    return FStringRef(text.data(), static_cast<std::int32_t>(text.size()));
}

void enter(FDefaults& group, std::string_view line) {
    const std::size_t mark = line.find_first_of("=#");
    if (mark == std::string_view::npos) {
        return;
    }
    const std::string_view value = line.substr(mark + 1);
    if (line[mark] == '=') {
        group.setString(textOf(line.substr(0, mark)), textOf(value));
        return;
    }
    std::int64_t number = 0;
    tessera::FNumberScan::signedDecimal(value.data(), value.data() + value.size(), number);
    group.setInt(textOf(line.substr(0, mark)), number);
}

bool same(const ModuleRecord& a, const ModuleRecord& b) {
    bool equal = std::memcmp(&a.info, &b.info, sizeof a.info) == 0 && a.classes.size() == b.classes.size();
    for (std::size_t i = 0; equal && i < a.classes.size(); ++i) {
        equal = std::memcmp(&a.classes[i], &b.classes[i], sizeof(ClassInfoWide)) == 0;
    }
    return equal;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FDefaults group;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    while (!input.empty()) {
        const std::size_t end = input.find('\n');
        enter(group, input.substr(0, end));
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    }

    ModuleRecord record;
    if (!readModuleRecord(group, record)) {
        return 0;
    }
    require(!record.classes.empty());
    for (const ClassInfoWide& info : record.classes) {
        require(info.category[31] == '\0' && info.name[63] == u'\0' && info.subcategories[127] == '\0' &&
                info.vendor[63] == u'\0' && info.version[63] == u'\0' && info.sdkVersion[63] == u'\0');
    }
    ModuleRecord twice;
    require(readModuleRecord(group, twice) && same(record, twice));
    // A text that was cut may have become one that the settings don't take.
    FDefaults written;
    ModuleRecord again;
    if (writeModuleRecord(written, record)) {
        require(readModuleRecord(written, again) && same(record, again));
    } else {
        require(!readModuleRecord(written, again));
    }
    return 0;
}
