// EditorCommand: the command line that does the editing, as the user wrote it.
//
// Words are separated by blanks; single or double quotes keep a word together, and a backslash outside single quotes
// takes a quote, a blank or a backslash behind it as it is. Before all else it stands for itself, as in the paths of
// Windows. No shell is involved, so nothing in a file's name can be taken for a command.
// Two forms exist:
//   {in} and {out}  the program reads one file and writes another: "sox -R {in} {out} reverse"
//   {file}          the program edits the file in place, as editors with a window do: "audacity {file}"
// Placeholders may stand inside a word. All text is UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessera::peer {

class EditorCommand {
public:
    // What is wrong with the command, for the user, in *problem when the result is empty.
    static std::optional<EditorCommand> parse(std::string_view text, std::string* problem);

    // The command line again. Single quotes hold its words together: of the module's export scripts, whose arguments
    // are put between double quotes on some systems, it comes back whole as long as no word holds a double quote.
    std::string text() const;

    bool editsInPlace() const { return editsInPlace_; }
    const std::string& program() const { return words_.front(); }

    // The arguments behind the program, with the placeholders filled. With an editor that works in place both paths
    // are the same file.
    std::vector<std::string> arguments(const std::string& in, const std::string& out) const;

private:
    std::vector<std::string> words_;
    bool editsInPlace_ = false;
};

} // namespace tessera::peer
