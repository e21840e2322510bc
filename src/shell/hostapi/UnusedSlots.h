// UnusedSlots: an interface with its reserved operations filled in, for whoever implements it and has nothing to put
// there. A caller that reaches one of them has the wrong number or the wrong object; unusedSlotCalled is told which.
#pragma once

#include "shell/hostapi/IAttributeList.h"
#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IAudioStream.h"
#include "shell/hostapi/IAudioWriterFactory.h"
#include "shell/hostapi/ICommandTarget.h"
#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IEventRestrictions.h"
#include "shell/hostapi/IHostFile.h"
#include "shell/hostapi/IIdleHost.h"
#include "shell/hostapi/IMediaItemList.h"
#include "shell/hostapi/IMediaObject.h"
#include "shell/hostapi/IPool.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectList.h"
#include "shell/hostapi/IProjectObject.h"
#include "shell/hostapi/IProjectTimeline.h"
#include "shell/hostapi/ISelection.h"
#include "shell/hostapi/IStreamEditTarget.h"
#include "shell/hostapi/ITransport.h"
#include "shell/hostapi/IUndoStack.h"
#include "shell/hostapi/IUndoTarget.h"
#include "shell/hostapi/IUrlFactory.h"

namespace tessera {

template <class Interface>
class UnusedSlots;

template <>
class UnusedSlots<IAttributeList> : public IAttributeList {
public:
    void reserved3() override { unusedSlotCalled("IAttributeList", 3); }
    void reserved4() override { unusedSlotCalled("IAttributeList", 4); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IAudioClip> : public IAudioClip {
public:
    void reserved4() override { unusedSlotCalled("IAudioClip", 4); }
    void reserved5() override { unusedSlotCalled("IAudioClip", 5); }
    void reserved6() override { unusedSlotCalled("IAudioClip", 6); }
    void reserved10() override { unusedSlotCalled("IAudioClip", 10); }
    void reserved12() override { unusedSlotCalled("IAudioClip", 12); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IAudioStream> : public IAudioStream {
public:
    void reserved4() override { unusedSlotCalled("IAudioStream", 4); }
    void reserved6() override { unusedSlotCalled("IAudioStream", 6); }
    void reserved9() override { unusedSlotCalled("IAudioStream", 9); }
    void reserved10() override { unusedSlotCalled("IAudioStream", 10); }
    void reserved11() override { unusedSlotCalled("IAudioStream", 11); }
    void reserved13() override { unusedSlotCalled("IAudioStream", 13); }
    void reserved15() override { unusedSlotCalled("IAudioStream", 15); }
    void reserved16() override { unusedSlotCalled("IAudioStream", 16); }
    void reserved17() override { unusedSlotCalled("IAudioStream", 17); }
    void reserved19() override { unusedSlotCalled("IAudioStream", 19); }
    void reserved20() override { unusedSlotCalled("IAudioStream", 20); }
    void reserved21() override { unusedSlotCalled("IAudioStream", 21); }
    void reserved22() override { unusedSlotCalled("IAudioStream", 22); }
    void reserved23() override { unusedSlotCalled("IAudioStream", 23); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IAudioWriterFactory> : public IAudioWriterFactory {
public:
    void reserved3() override { unusedSlotCalled("IAudioWriterFactory", 3); }
    void reserved4() override { unusedSlotCalled("IAudioWriterFactory", 4); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<ICommandTarget> : public ICommandTarget {
public:
    void reserved4() override { unusedSlotCalled("ICommandTarget", 4); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IEventOwner> : public IEventOwner {
public:
    void reserved3() override { unusedSlotCalled("IEventOwner", 3); }
    void reserved4() override { unusedSlotCalled("IEventOwner", 4); }
    void reserved5() override { unusedSlotCalled("IEventOwner", 5); }
    void reserved6() override { unusedSlotCalled("IEventOwner", 6); }
    void reserved7() override { unusedSlotCalled("IEventOwner", 7); }
    void reserved8() override { unusedSlotCalled("IEventOwner", 8); }
    void reserved9() override { unusedSlotCalled("IEventOwner", 9); }
    void reserved10() override { unusedSlotCalled("IEventOwner", 10); }
    void reserved11() override { unusedSlotCalled("IEventOwner", 11); }
    void reserved12() override { unusedSlotCalled("IEventOwner", 12); }
    void reserved13() override { unusedSlotCalled("IEventOwner", 13); }
    void reserved14() override { unusedSlotCalled("IEventOwner", 14); }
    void reserved15() override { unusedSlotCalled("IEventOwner", 15); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IEventRestrictions> : public IEventRestrictions {
public:
    void reserved6() override { unusedSlotCalled("IEventRestrictions", 6); }
    void reserved7() override { unusedSlotCalled("IEventRestrictions", 7); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IHostFile> : public IHostFile {
public:
    void reserved5() override { unusedSlotCalled("IHostFile", 5); }
    void reserved7() override { unusedSlotCalled("IHostFile", 7); }
    void reserved8() override { unusedSlotCalled("IHostFile", 8); }
    void reserved10() override { unusedSlotCalled("IHostFile", 10); }
    void reserved11() override { unusedSlotCalled("IHostFile", 11); }
    void reserved12() override { unusedSlotCalled("IHostFile", 12); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IIdleHost> : public IIdleHost {
public:
    void reserved3() override { unusedSlotCalled("IIdleHost", 3); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IMediaItemList> : public IMediaItemList {
public:
    void reserved3() override { unusedSlotCalled("IMediaItemList", 3); }
    void reserved4() override { unusedSlotCalled("IMediaItemList", 4); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IMediaObject> : public IMediaObject {
public:
    void reserved4() override { unusedSlotCalled("IMediaObject", 4); }
    void reserved5() override { unusedSlotCalled("IMediaObject", 5); }
    void reserved6() override { unusedSlotCalled("IMediaObject", 6); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IPool> : public IPool {
public:
    void reserved3() override { unusedSlotCalled("IPool", 3); }
    void reserved4() override { unusedSlotCalled("IPool", 4); }
    void reserved5() override { unusedSlotCalled("IPool", 5); }
    void reserved6() override { unusedSlotCalled("IPool", 6); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IProject> : public IProject {
public:
    void reserved3() override { unusedSlotCalled("IProject", 3); }
    void reserved4() override { unusedSlotCalled("IProject", 4); }
    void reserved5() override { unusedSlotCalled("IProject", 5); }
    void reserved6() override { unusedSlotCalled("IProject", 6); }
    void reserved7() override { unusedSlotCalled("IProject", 7); }
    void reserved8() override { unusedSlotCalled("IProject", 8); }
    void reserved13() override { unusedSlotCalled("IProject", 13); }
    void reserved14() override { unusedSlotCalled("IProject", 14); }
    void reserved15() override { unusedSlotCalled("IProject", 15); }
    void reserved17() override { unusedSlotCalled("IProject", 17); }
    void reserved18() override { unusedSlotCalled("IProject", 18); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IProjectList> : public IProjectList {
public:
    void reserved3() override { unusedSlotCalled("IProjectList", 3); }
    void reserved4() override { unusedSlotCalled("IProjectList", 4); }
    void reserved5() override { unusedSlotCalled("IProjectList", 5); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IProjectObject> : public IProjectObject {
public:
    void reserved3() override { unusedSlotCalled("IProjectObject", 3); }
    void reserved6() override { unusedSlotCalled("IProjectObject", 6); }
    void reserved7() override { unusedSlotCalled("IProjectObject", 7); }
    void reserved8() override { unusedSlotCalled("IProjectObject", 8); }
    void reserved9() override { unusedSlotCalled("IProjectObject", 9); }
    void reserved10() override { unusedSlotCalled("IProjectObject", 10); }
    void reserved11() override { unusedSlotCalled("IProjectObject", 11); }
    void reserved12() override { unusedSlotCalled("IProjectObject", 12); }
    void reserved13() override { unusedSlotCalled("IProjectObject", 13); }
    void reserved14() override { unusedSlotCalled("IProjectObject", 14); }
    void reserved15() override { unusedSlotCalled("IProjectObject", 15); }
    void reserved16() override { unusedSlotCalled("IProjectObject", 16); }
    void reserved17() override { unusedSlotCalled("IProjectObject", 17); }
    void reserved18() override { unusedSlotCalled("IProjectObject", 18); }
    void reserved19() override { unusedSlotCalled("IProjectObject", 19); }
    void reserved21() override { unusedSlotCalled("IProjectObject", 21); }
    void reserved22() override { unusedSlotCalled("IProjectObject", 22); }
    void reserved25() override { unusedSlotCalled("IProjectObject", 25); }
    void reserved27() override { unusedSlotCalled("IProjectObject", 27); }
    void reserved28() override { unusedSlotCalled("IProjectObject", 28); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IProjectTimeline> : public IProjectTimeline {
public:
    void reserved3() override { unusedSlotCalled("IProjectTimeline", 3); }
    void reserved4() override { unusedSlotCalled("IProjectTimeline", 4); }
    void reserved6() override { unusedSlotCalled("IProjectTimeline", 6); }
    void reserved7() override { unusedSlotCalled("IProjectTimeline", 7); }
    void reserved8() override { unusedSlotCalled("IProjectTimeline", 8); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<ISelection> : public ISelection {
public:
    void reserved4() override { unusedSlotCalled("ISelection", 4); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IStreamEditTarget> : public IStreamEditTarget {
public:
    void reserved3() override { unusedSlotCalled("IStreamEditTarget", 3); }
    void reserved4() override { unusedSlotCalled("IStreamEditTarget", 4); }
    void reserved5() override { unusedSlotCalled("IStreamEditTarget", 5); }
    void reserved6() override { unusedSlotCalled("IStreamEditTarget", 6); }
    void reserved7() override { unusedSlotCalled("IStreamEditTarget", 7); }
    void reserved8() override { unusedSlotCalled("IStreamEditTarget", 8); }
    void reserved9() override { unusedSlotCalled("IStreamEditTarget", 9); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<ITransport> : public ITransport {
public:
    void reserved3() override { unusedSlotCalled("ITransport", 3); }
    void reserved4() override { unusedSlotCalled("ITransport", 4); }
    void reserved5() override { unusedSlotCalled("ITransport", 5); }
    void reserved6() override { unusedSlotCalled("ITransport", 6); }
    void reserved7() override { unusedSlotCalled("ITransport", 7); }
    void reserved8() override { unusedSlotCalled("ITransport", 8); }
    void reserved10() override { unusedSlotCalled("ITransport", 10); }
    void reserved11() override { unusedSlotCalled("ITransport", 11); }
    void reserved12() override { unusedSlotCalled("ITransport", 12); }
    void reserved13() override { unusedSlotCalled("ITransport", 13); }
    void reserved14() override { unusedSlotCalled("ITransport", 14); }
    void reserved15() override { unusedSlotCalled("ITransport", 15); }
    void reserved16() override { unusedSlotCalled("ITransport", 16); }
    void reserved17() override { unusedSlotCalled("ITransport", 17); }
    void reserved18() override { unusedSlotCalled("ITransport", 18); }
    void reserved19() override { unusedSlotCalled("ITransport", 19); }
    void reserved20() override { unusedSlotCalled("ITransport", 20); }
    void reserved21() override { unusedSlotCalled("ITransport", 21); }
    void reserved22() override { unusedSlotCalled("ITransport", 22); }
    void reserved23() override { unusedSlotCalled("ITransport", 23); }
    void reserved24() override { unusedSlotCalled("ITransport", 24); }
    void reserved25() override { unusedSlotCalled("ITransport", 25); }
    void reserved26() override { unusedSlotCalled("ITransport", 26); }
    void reserved27() override { unusedSlotCalled("ITransport", 27); }
    void reserved28() override { unusedSlotCalled("ITransport", 28); }
    void reserved29() override { unusedSlotCalled("ITransport", 29); }
    void reserved30() override { unusedSlotCalled("ITransport", 30); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IUndoStack> : public IUndoStack {
public:
    void reserved3() override { unusedSlotCalled("IUndoStack", 3); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IUndoTarget> : public IUndoTarget {
public:
    void reserved3() override { unusedSlotCalled("IUndoTarget", 3); }
    void reserved4() override { unusedSlotCalled("IUndoTarget", 4); }
    void reserved5() override { unusedSlotCalled("IUndoTarget", 5); }
    void reserved6() override { unusedSlotCalled("IUndoTarget", 6); }
    void reserved7() override { unusedSlotCalled("IUndoTarget", 7); }
    void reserved8() override { unusedSlotCalled("IUndoTarget", 8); }
    void reserved9() override { unusedSlotCalled("IUndoTarget", 9); }
    void reserved10() override { unusedSlotCalled("IUndoTarget", 10); }
    void reserved11() override { unusedSlotCalled("IUndoTarget", 11); }
    void reserved12() override { unusedSlotCalled("IUndoTarget", 12); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

template <>
class UnusedSlots<IUrlFactory> : public IUrlFactory {
public:
    void reserved5() override { unusedSlotCalled("IUrlFactory", 5); }
    void reserved7() override { unusedSlotCalled("IUrlFactory", 7); }
    void reserved8() override { unusedSlotCalled("IUrlFactory", 8); }
    void reserved10() override { unusedSlotCalled("IUrlFactory", 10); }
    void reserved11() override { unusedSlotCalled("IUrlFactory", 11); }
    void reserved12() override { unusedSlotCalled("IUrlFactory", 12); }

protected:
    ~UnusedSlots() = default;
    virtual void unusedSlotCalled(const char* interfaceName, int slot) {
        static_cast<void>(interfaceName);
        static_cast<void>(slot);
    }
};

} // namespace tessera
