// ServiceRecord: one known service and the process that offers it.
//
// Its file, "<registry folder>/<service name>", is text of three lines, each with the platform's line ending: the base
// name of the process's executable, its id in decimal, the service's type. Name and path are the file's own. All texts
// are UTF-8, paths have "/" as the separator.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

struct ServiceRecord {
    // With name and path set, the rest empty.
    static ServiceRecord forPath(std::string path);

    // The three lines. parse raises std::invalid_argument ("invalid stoi argument") for a second line that is no number
    // and std::out_of_range ("stoi argument out of range") for one that doesn't fit; only the first line has been taken
    // over then.
    std::string format() const;
    void parse(std::string_view text);

    // A file that can't be opened leaves everything as it is; otherwise as parse.
    void readFile();
    // Replaces the file's content as a whole. False when it can't be written.
    bool writeFile() const;

    // Whether the process runs and is of that name: an id that another program has got by now doesn't count.
    bool isAlive() const;

    friend bool operator==(const ServiceRecord&, const ServiceRecord&) = default;

    int processId = 0;
    std::string processName;
    std::string name;
    std::string type;
    std::string path;
};

} // namespace tessera
