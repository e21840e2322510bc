#include "persistence/archives/ArchiveComponent.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/IComponentSource.h"
#include "persistence/paths/FFileType.h"
#include "platform/Threads.h"

namespace tessera {

namespace {

constexpr const char* kCategory = "VirtualFileSystem";

FRefPtr<IComponentSource> componentSource() {
    ClassFactory* factory = ClassFactory::getInstance(false);
    void* source = factory != nullptr ? factory->createInstance(IComponentSource::iid) : nullptr;
    return FRefPtr<IComponentSource>::adopt(static_cast<IComponentSource*>(source));
}

} // namespace

FRefPtr<ArchiveComponent> ArchiveComponent::forType(const FFileType& type) {
    const FRefPtr<IComponentSource> source = componentSource();
    const std::int32_t count = source && type.isDefined() ? source->count(kCategory) : 0;
    for (std::int32_t i = 0; i < count; ++i) {
        if (IBaseUnknown* made = source->createAt(kCategory, i)) {
            const auto component = FRefPtr<ArchiveComponent>::adopt(new ArchiveComponent(*made));
            if (component->understands(type)) {
                return component;
            }
        }
    }
    return {};
}

ArchiveComponent::ArchiveComponent(IBaseUnknown& made)
    : made_(&made), component_(queryFor<IVirtualFileSystem>(&made)), thread_(platform::currentThreadId()) {}

ArchiveComponent::~ArchiveComponent() {
    component_.reset();
    const auto source = platform::currentThreadId() == thread_ ? componentSource() : FRefPtr<IComponentSource>();
    if (source) {
        source->releaseInstance(made_);
    } else {
        made_->release();
    }
}

bool ArchiveComponent::understands(const FFileType& type) const {
    HostTypeRecord record{};
    return component_ && component_->getFileType(&record) == kResultOk && FFileType(record).isEqual(&type);
}

} // namespace tessera
