// UValue: what user interface and model watch together: a value with a state, a tag and a target.
//
// This class holds no number. Its subclasses do (UIntValue), and answer the operations about it, which here give 0, do
// nothing and are false. A target hears of each notification through updateFrom(value, kNotified); a bracket target is
// sent the messages "BeginEdit" and "EndEdit" as well, with the value under "Value". Dependents are told of enabling
// and disabling alone.
//
// The target is borrowed unless the value was told to own it. Not synchronised: a value belongs to one thread. Written
// to documents as "Binding::Value", and known by that name to isTypeOf.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/text/FString.h"
#include "foundation/values/IValue.h"
#include "foundation/values/IValueBracket.h"

#include <cstdint>

namespace tessera {

class IValueObserver;

class UValue : public CmClass<UValue, CmObject, IValue, IValueBracket> {
public:
    static FMetaClass metaClass;
    // The name towards documents and other modules.
    static constexpr const char* kBindingName = "Binding::Value";

    // The low byte of the state says what kind of number the value holds. kInitial comes with each kind.
    enum State : std::uint32_t {
        kPlainKind = 1,
        kIntegerKind = 2,
        kOwnsTarget = 0x20,
        kDisabled = 0x100,
        kInitial = 0x200,
        // While it is clear, changes are reported.
        kUnreported = 0x800,
        kWraps = 0x1000,
        kDisplayOnly = 0x2000,
        kBracketTarget = 0x10000,
        // endEdit tells even what checkChange wouldn't permit.
        kUncheckedEnd = 0x80000,
        kUnobserved = 0x200000,
        // While endEdit notifies: the edit came from the user.
        kEndFromUser = 0x800000,
    };

    // What setEnabled tells dependents, and notify the target.
    static constexpr std::int32_t kEnabledChanged = 1;
    static constexpr std::int32_t kNotified = 1;

    UValue() = default;
    // Shares the target; of one that is owned the copy takes a reference of its own.
    UValue(const UValue& other);
    UValue& operator=(const UValue&) = delete;
    ~UValue() override;

    bool isTypeOf(const char* className, bool askBase) const override;
    UValue* clone() const override;

    // With own, the value takes the caller's reference over. A UPlugTarget becomes a bracket target; for another one
    // see setBracketTarget.
    virtual void setTarget(CmObject* target, std::uint32_t tag, bool own);
    virtual void setTag(std::uint32_t tag);
    virtual void setEnabled(bool on);
    bool isEnabled() const override;
    // What kind of number this is, for those who show it.
    virtual bool isText() const;
    virtual bool isFraction() const;
    virtual bool isStepped() const;
    virtual bool isEditable() const;
    // The value that setValue would take instead of this one.
    virtual std::int32_t limit(std::int32_t value) const;
    // 0 is the minimum, 1 the maximum.
    virtual void setNormalized(double value);
    virtual void setReport(bool on);
    // Wrapping reaches limit; decrement and increment stop at the ends all the same.
    virtual void setWrap(bool on);
    virtual void decrement();
    virtual void increment();
    // Null is ignored.
    virtual void copyValue(const UValue* other);
    // Not 0 becomes 0, and 0 becomes 1, in a bracket of its own if the change is permitted.
    virtual void toggle();
    virtual void notify();
    void beginEdit(bool fromUser) override;
    void endEdit(bool fromUser) override;
    virtual bool isDisplay() const;
    virtual void setDisplay(bool on);
    void setValue(std::int32_t value) override;
    std::int32_t getValue() const override;
    std::int32_t getMinimum() const override;
    // Setting an end of the range leaves the value where it is, until it is next set.
    virtual void setMinimum(std::int32_t minimum);
    std::int32_t getMaximum() const override;
    virtual void setMaximum(std::int32_t maximum);
    std::int32_t getDefault() const override;
    virtual void setDefault(std::int32_t value);
    // Both false when the value has no text, respectively can't read this one.
    virtual bool getString(FString& text) const;
    virtual bool setString(const FStringRef& text);
    // May the value change now? And: it has.
    virtual bool checkChange();
    virtual void applyChange();

    std::uint32_t getState() const { return state_; }
    void setState(std::uint32_t bits, bool on);
    bool hasState(std::uint32_t bits) const { return (state_ & bits) != 0; }
    std::uint32_t getTag() const { return tag_; }
    // Borrowed.
    CmObject* getTarget() const { return target_; }
    void setBracketTarget(bool on) { setState(kBracketTarget, on); }
    // Who opened or closed the last bracket.
    bool isEditFromUser() const { return editFromUser_; }

    // One for the process; not referenced, null for none. While it is off nothing is told to it.
    static void setGlobalObserver(IValueObserver* observer);
    static void setGlobalObserverOff(bool off);

protected:
    explicit UValue(std::uint32_t kind) : state_(kInitial | kind) {}

private:
    enum class Bracket { told, forwarded };
    Bracket tellBracket(const char* messageName, bool fromUser);
    void releaseTarget();

    std::uint32_t state_ = kInitial | kPlainKind;
    std::uint32_t tag_ = 0;
    CmObject* target_ = nullptr;
    bool editFromUser_ = false;
};

} // namespace tessera
