// ITranslationListener: what the readers of translation files tell, in the order of the file.
#pragma once

#include "foundation/object/FResult.h"

#include <cstdint>
#include <string_view>

namespace tessera {

class FString;

struct ITranslationListener {
    // A language that the file has, with the name that it is shown by.
    virtual void addLanguage(std::string_view code, std::u16string_view name) = 0;
    // Whether translations into that language are of any use. Others are counted and not told.
    virtual bool wants(std::string_view code) const = 0;
    // The text of a key in one language; line is where it ends, from 1. kResultFailure ends the reading, with error as
    // the reason.
    virtual FResult addTranslation(std::u16string_view key, std::string_view code, std::u16string_view text,
                                   std::int32_t line, FString& error) = 0;

protected:
    ~ITranslationListener() = default;
};

} // namespace tessera
