// ExportListener: hooks the host's audio export. Before the export it puts three attributes on the file, which tell
// whoever finds the file what project and what stretch it came from; after it, it passes the file's path on.
//
// The host holds a reference between start and stop. Main thread.
#pragma once

#include "shell/hostapi/IExportListener.h"
#include "shell/hostapi/IHostFile.h"
#include "workflow/HostGuest.h"

#include <array>
#include <functional>

namespace tessera {

class ExportListener final : public HostGuest<IExportListener> {
public:
    // Takes the path of the file that was written, 16-bit, zero-terminated.
    using Exported = std::function<void(const char16_t*)>;

    void start(Exported exported);
    void stop();

    FResult prepareExport(IHostFile* file, double assetStart, double assetLength, IProject* project,
                          IAttributeList* attributes) override;
    FResult exportFinished(std::int32_t state) override;

private:
    // Of the latest export that was prepared; what goes out when one is finished.
    std::array<char16_t, kHostPathUnits> exportedFile_{};
    Exported exported_;
};

} // namespace tessera
