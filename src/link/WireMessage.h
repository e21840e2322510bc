// The text of a wire message: "2;", then each field followed by ";". The nanomsg message is the frame; there is no
// length, no terminator and no escaping. A field that holds a ";" is two fields at the receiver: both sides of the link
// have to agree on that, so the writer doesn't interfere.
//
// Text is UTF-8, a path is the platform's own text, a number is decimal text, a boolean is "true" or "false".
// Answers to a message are bare texts and no wire messages.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tessera {

// As read: field 0 the version, field 1 the verb, the verb's arguments from field 2 on. As written: the verb and its
// arguments, since the writer adds the version.
using FieldList = std::vector<std::string>;

inline constexpr std::string_view kWireVersion = "2";

namespace WireVerb {

// From the module to the peer. Host name, host version, "true" on arrival or "false" on leaving; waits for an answer.
inline constexpr std::string_view sendConnectionInfo = "sendConnectionInfo";
// From the module. Path of the audio file to open.
inline constexpr std::string_view openFile = "openFile";
// Both ways. Path of the audio file whose edit is given up.
inline constexpr std::string_view cancelFileEdit = "cancelFileEdit";
// From the module. Path of the file that an export in the host has written.
inline constexpr std::string_view renderedFile = "renderedFile";
// From the module. The host's text for the driver hand-over; waits for an answer.
inline constexpr std::string_view suspendKiteDriver = "suspendKiteDriver";
// From the peer. Path of the edited file.
inline constexpr std::string_view finishedFileEdit = "finishedFileEdit";
// From the peer. Path of a host project, start and length in seconds.
inline constexpr std::string_view openProject = "openProject";
// From the peer. The text for the driver hand-over; the module answers with the bytes of that text.
inline constexpr std::string_view requestKiteDriver = "requestKiteDriver";

} // namespace WireVerb

std::string writeMessage(std::initializer_list<std::string_view> fields);
std::string writeMessage(const FieldList& fields);

// The fields with the version in front. What stands behind the last ";" is a field only if it isn't empty.
FieldList readMessage(std::string_view text);

// False for a message of another format, which the receiver drops unread. Compared as text: "02" is another format.
bool hasCurrentVersion(const FieldList& fields);

// Throws std::out_of_range, "invalid vector<T> subscript", past the end.
const std::string& fieldText(const FieldList& fields, std::size_t index);
// As fieldText; throws std::invalid_argument, "invalid stod argument", for a text that doesn't begin with a number, and
// std::out_of_range, "stod argument out of range". The decimal sign is the point, whatever the host's locale says.
double fieldNumber(const FieldList& fields, std::size_t index);

} // namespace tessera
