#include "peer/EditorCommand.h"

namespace tessera::peer {
namespace {

constexpr std::string_view kIn = "{in}";
constexpr std::string_view kOut = "{out}";
constexpr std::string_view kFile = "{file}";
// Behind a backslash.
constexpr std::string_view kTakenAsTheyAre = "\\\"' \t\n";
constexpr std::size_t kNone = std::string_view::npos;

std::optional<std::vector<std::string>> splitWords(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\\' && quote != '\'' && i + 1 < text.size() && kTakenAsTheyAre.find(text[i + 1]) != kNone) {
            word += text[++i];
            inWord = true;
        } else if (quote != 0) {
            if (c == quote) {
                quote = 0;
            } else {
                word += c;
            }
        } else if (c == '\'' || c == '"') {
            quote = c;
            inWord = true;
        } else if (c == ' ' || c == '\t' || c == '\n') {
            if (inWord) {
                words.push_back(std::move(word));
                word.clear();
                inWord = false;
            }
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quote != 0) {
        return std::nullopt;
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return words;
}

std::string quoted(const std::string& word) {
    if (!word.empty() && word.find_first_of(kTakenAsTheyAre) == kNone) {
        return word;
    }
    std::string result = "'";
    for (const char c : word) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + '\'';
}

bool anyArgumentHolds(const std::vector<std::string>& words, std::string_view placeholder) {
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i].find(placeholder) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// One pass from left to right, so that a path which itself holds a placeholder's text isn't filled again.
std::string filled(std::string_view word, const std::string& in, const std::string& out) {
    std::string result;
    while (!word.empty()) {
        if (word.starts_with(kIn)) {
            result += in;
            word.remove_prefix(kIn.size());
        } else if (word.starts_with(kOut)) {
            result += out;
            word.remove_prefix(kOut.size());
        } else if (word.starts_with(kFile)) {
            result += out;
            word.remove_prefix(kFile.size());
        } else {
            result += word.front();
            word.remove_prefix(1);
        }
    }
    return result;
}

} // namespace

std::optional<EditorCommand> EditorCommand::parse(std::string_view text, std::string* problem) {
    std::optional<std::vector<std::string>> words = splitWords(text);
    if (!words) {
        *problem = "the editor command ends inside a quotation";
        return std::nullopt;
    }
    if (words->empty() || words->front().empty()) {
        *problem = "the editor command is empty";
        return std::nullopt;
    }
    const bool in = anyArgumentHolds(*words, kIn);
    const bool out = anyArgumentHolds(*words, kOut);
    const bool file = anyArgumentHolds(*words, kFile);
    if (file ? (in || out) : !(in && out)) {
        *problem = "the editor command needs {in} and {out}, or {file} for an editor that works in place";
        return std::nullopt;
    }
    EditorCommand command;
    command.words_ = std::move(*words);
    command.editsInPlace_ = file;
    return command;
}

std::string EditorCommand::text() const {
    std::string result;
    for (const std::string& word : words_) {
        result += (result.empty() ? "" : " ") + quoted(word);
    }
    return result;
}

std::vector<std::string> EditorCommand::arguments(const std::string& in, const std::string& out) const {
    std::vector<std::string> result;
    for (std::size_t i = 1; i < words_.size(); ++i) {
        result.push_back(filled(words_[i], in, out));
    }
    return result;
}

} // namespace tessera::peer
