// The library that the module's load is measured against: a megabyte of data and code, and 64 static records that enter
// themselves in a table while it is loaded.
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace {

struct Record;

std::map<std::string, Record*>& table() {
    static std::map<std::string, Record*> records;
    return records;
}

struct Record {
    explicit Record(int number) : name("Record" + std::to_string(number)) { table()[name] = this; }
    std::string name;
};

template <int Number>
struct Entered {
    static Record record;
};
template <int Number>
Record Entered<Number>::record(Number);

template <int... Numbers>
std::array<Record*, sizeof...(Numbers)> enterAll(std::integer_sequence<int, Numbers...>) {
    return {&Entered<Numbers>::record...};
}

[[gnu::used]] std::uint8_t filler[1 << 20] = {1};

} // namespace

extern "C" [[gnu::visibility("default")]] std::size_t rivalRecords() {
    return enterAll(std::make_integer_sequence<int, 64>()).size() + table().size() + filler[0];
}
