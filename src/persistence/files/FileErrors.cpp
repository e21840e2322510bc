#include "persistence/files/FileErrors.h"

#include "persistence/objects/PersistenceHooks.h"
#include "platform/SystemErrors.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace tessera {

namespace {

constexpr const char* kNoError = "No error occurred.";
constexpr const char* kUnexpected = "An unexpected error occurred. The system's description is: ";

struct TroubleText {
    platform::ErrorTrouble trouble;
    const char* text;
};

// The spelling is the key under which translations are found.
constexpr TroubleText kTexts[] = {
    {platform::ErrorTrouble::transfer, "A reading/writing error occurred. This disk is not working normaly."},
    {platform::ErrorTrouble::notFound, "The file/folder could not be found at this location."},
    {platform::ErrorTrouble::nameTooLong, "This name is too long."},
    {platform::ErrorTrouble::diskFull, "This disk is full."},
    {platform::ErrorTrouble::readOnly, "This disk is read only."},
    {platform::ErrorTrouble::notAllowed, "This operation is not allowed."},
};

} // namespace

FString systemErrorText(std::int32_t error) {
    if (error == 0) {
        return translateText(kNoError);
    }
    FString text;
    text.assignUtf8(platform::describeError(error).c_str());
    return text;
}

FString fileErrorText(std::int32_t error) {
    const platform::ErrorTrouble trouble = platform::troubleOf(error);
    if (trouble == platform::ErrorTrouble::none) {
        return systemErrorText(error);
    }
    const auto* known = std::find_if(std::begin(kTexts), std::end(kTexts),
                                     [trouble](const TroubleText& row) { return row.trouble == trouble; });
    if (known != std::end(kTexts)) {
        return translateText(known->text);
    }
    FString text = translateText(kUnexpected);
    text.append(systemErrorText(error));
    return text;
}

} // namespace tessera
