#include "workflow/ExportListener.h"

#include "shell/hostapi/AttributeValue.h"
#include "shell/hostapi/IAttributeList.h"
#include "shell/hostapi/IExportHost.h"
#include "shell/hostapi/IProject.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"
#include "workflow/HostText.h"

namespace tessera {

namespace {

constexpr std::int32_t kFileWritten = 1;

void setText(IAttributeList& attributes, const char* key, const std::string& text) {
    AttributeValue value;
    value.flags = AttributeValue::kText8;
    value.text8 = text.c_str();
    attributes.set(key, &value, 0);
}

void setNumber(IAttributeList& attributes, const char* key, double number) {
    AttributeValue value;
    value.flags = AttributeValue::kDouble;
    value.number = number;
    attributes.set(key, &value, 0);
}

} // namespace

void ExportListener::start(Exported exported) {
    if (const auto host = queryService<IExportHost>()) {
        host->addListener(this);
    }
    exported_ = std::move(exported);
}

void ExportListener::stop() {
    if (const auto host = queryService<IExportHost>()) {
        host->removeListener(this);
    }
}

FResult ExportListener::prepareExport(IHostFile* file, double assetStart, double assetLength, IProject* project,
                                      IAttributeList* attributes) {
    if (project == nullptr || attributes == nullptr) {
        return kInvalidArgument;
    }
    return atHostBorder(kResultFailure, [&] {
        if (file != nullptr) {
            file->path(exportedFile_.data());
            exportedFile_.back() = 0;
        }
        const std::string projectPath = pathOf(project->file());
        if (projectPath.empty()) {
            return kResultFalse;
        }
        setText(*attributes, "GACProjectPath", projectPath);
        setNumber(*attributes, "GACAssetStartTime", assetStart);
        setNumber(*attributes, "GACAssetLength", assetLength);
        return kResultOk;
    });
}

FResult ExportListener::exportFinished(std::int32_t state) {
    if (state == kFileWritten && exported_) {
        atHostBorder([&] { exported_(exportedFile_.data()); });
    }
    return kResultOk;
}

} // namespace tessera
