// What a guest gives to the host, as small objects that record how they are called.
#pragma once

#include "shell/hostapi/ICommandHandler.h"
#include "shell/hostapi/IDriverClient.h"
#include "shell/hostapi/IExportListener.h"
#include "shell/hostapi/IIdleClient.h"
#include "shell/hostapi/IObjectObserver.h"
#include "shell/hostapi/IProjectListListener.h"
#include "shell/hostapi/IProjectListener.h"
#include "shell/hostapi/IUndoStep.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tessera::host {

// A guest's object on the stack of a test. It counts its references: 1 is the test's own.
template <class Interface>
class GuestDouble : public Interface {
public:
    virtual ~GuestDouble() = default;
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        *out = uid == IBaseUnknown::iid || uid == Interface::iid ? static_cast<Interface*>(this) : nullptr;
        return *out == nullptr ? kNoInterface : (++references, kResultOk);
    }
    std::uint32_t addRef() override { return ++references; }
    std::uint32_t release() override { return --references; }

    std::uint32_t references = 1;
};

class RecordingStep final : public GuestDouble<IUndoStep> {
public:
    FResult perform() override {
        calls += "perform ";
        if (onPerform) {
            onPerform();
        }
        return kResultOk;
    }
    FResult undo() override {
        calls += "undo ";
        return kResultOk;
    }
    FResult redo() override {
        calls += "redo ";
        return kResultOk;
    }

    std::string calls;
    std::function<void()> onPerform;
};

class RecordingObserver final : public GuestDouble<IObjectObserver> {
public:
    void update(IBaseUnknown*, std::int32_t code) override { codes.push_back(code); }

    std::vector<std::int32_t> codes;
};

class RecordingListener final : public GuestDouble<IProjectListListener> {
public:
    void activated(IProject* project) override {
        calls += "activated ";
        active = project;
    }
    void deactivated() override { calls += "deactivated "; }
    void projectDeactivated(IProject* project) override { calls += project == active ? "gone " : "other "; }

    std::string calls;
    IProject* active = nullptr;
};

class RecordingHandler final : public GuestDouble<ICommandHandler> {
public:
    FResult checkOrExecute(const char* category, const char* name, bool checkOnly) override {
        calls += std::string(checkOnly ? "check " : "execute ") + category + "/" + name + " ";
        return checkOnly ? checkAnswer : executeAnswer;
    }

    std::string calls;
    FResult checkAnswer = kResultOk;
    FResult executeAnswer = kResultOk;
};

class RecordingIdleClient final : public GuestDouble<IIdleClient> {
public:
    void onIdle() override {
        ++calls;
        if (action) {
            action();
        }
    }

    int calls = 0;
    std::function<void()> action;
};

class RecordingDriverClient final : public GuestDouble<IDriverClient> {
public:
    FResult suspend(void*, const char16_t* text) override {
        texts.emplace_back(text);
        return kResultOk;
    }
    FResult reserved4() override { return kResultOk; }

    std::vector<std::u16string> texts;
};

class RecordingExportListener final : public GuestDouble<IExportListener> {
public:
    FResult prepareExport(IHostFile* file, double start, double length, IProject* project,
                          IAttributeList* attributes) override {
        calls += "prepare ";
        assetStart = start;
        assetLength = length;
        return onPrepare ? onPrepare(file, project, attributes) : kResultOk;
    }
    FResult exportFinished(std::int32_t state) override {
        calls += "finished " + std::to_string(state) + " ";
        return kResultOk;
    }

    std::string calls;
    double assetStart = -1;
    double assetLength = -1;
    std::function<FResult(IHostFile*, IProject*, IAttributeList*)> onPrepare;
};

} // namespace tessera::host
