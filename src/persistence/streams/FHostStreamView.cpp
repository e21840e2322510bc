#include "persistence/streams/FHostStreamView.h"

#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

// For callers that don't ask for the number.
template <class T>
void store(T* target, T value) {
    if (target != nullptr) {
        *target = value;
    }
}

} // namespace

FResult FHostStreamView::queryInterface(const FUIDBytes& uid, void** out) {
    return stream_.queryInterface(uid, out);
}

std::uint32_t FHostStreamView::addRef() {
    return stream_.addRef();
}

std::uint32_t FHostStreamView::release() {
    return stream_.release();
}

FResult FHostStreamView::read(void* buffer, std::int32_t size, std::int32_t* count) {
    if (size < 1) {
        return kResultFalse;
    }
    store(count, stream_.read(buffer, size));
    return kResultOk;
}

FResult FHostStreamView::write(const void* buffer, std::int32_t size, std::int32_t* count) {
    if (size < 0) {
        return kResultFalse;
    }
    const std::int32_t taken = stream_.write(buffer, size);
    store(count, taken);
    return taken < size ? kResultFalse : kResultOk;
}

FResult FHostStreamView::seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) {
    if (mode < static_cast<std::int32_t>(SeekMode::fromStart) || mode > static_cast<std::int32_t>(SeekMode::fromEnd)) {
        return kResultFalse;
    }
    const std::int64_t reached = stream_.seek(offset, static_cast<SeekMode>(mode));
    store(position, reached);
    return reached < 0 ? kResultFalse : kResultOk;
}

FResult FHostStreamView::tell(std::int64_t* position) {
    if (position == nullptr) {
        return kInvalidArgument;
    }
    *position = stream_.tell();
    return kResultOk;
}

} // namespace tessera
