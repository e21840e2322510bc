// FileChangeHub: passes the notices of changed files to whoever joined it. It stands in the messenger under the name
// "FileSystemChange", where the file system sends them.
//
// Listeners are message targets (see FMessenger): they get the message "PathChanged" at once, on the thread that
// changed the file. join keeps a reference until leave. Main thread.
#pragma once

#include "foundation/object/CmClass.h"

#include <vector>

namespace tessera {

class FileChangeHub : public CmClass<FileChangeHub, CmObject> {
public:
    static FMetaClass metaClass;
    static constexpr const char* name = "FileSystemChange";

    // Made, and entered in the messenger, with create. Null when there is none, and at the end of the process.
    static FileChangeHub* getInstance(bool create);

    void join(IBaseUnknown* listener);
    void leave(IBaseUnknown* listener);

    std::int32_t receiveMessage(FMessage* message) override;

private:
    FileChangeHub();
    ~FileChangeHub() override;

    std::int32_t group_ = 0;
    // Each referenced; the messenger's group doesn't.
    std::vector<IBaseUnknown*> listeners_;
};

} // namespace tessera
