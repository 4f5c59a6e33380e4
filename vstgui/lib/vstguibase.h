// Version, basic types and the reference-counted base class of the toolkit.
#pragma once

#include <cstdint>
#include <utility>

#define VSTGUI_VERSION_MAJOR 4
#define VSTGUI_VERSION_MINOR 3

namespace VSTGUI {

using CCoord = double;  // pixels
using IdStringPtr = const char*;
using UTF8StringPtr = const char*;
using UTF8StringBuffer = char*;

enum CMessageResult { kMessageUnknown = 0, kMessageNotified = 1 };

// Reference counted by remember and forget, on the user-interface thread only. Message identifiers
// are compared as pointers.
class CBaseObject {
public:
    // One reference, owned by the creator; a copy also starts with one.
    CBaseObject() = default;
    CBaseObject(const CBaseObject&) : nbReference(1) { }
    CBaseObject& operator=(const CBaseObject&) { return *this; }
    virtual ~CBaseObject() = default;

    // Releases one reference; the last one calls beforeDelete and deletes the object.
    virtual void forget();
    virtual void remember() { ++nbReference; }
    virtual int32_t getNbReference() const { return nbReference; }

    virtual void beforeDelete() { }
    virtual CMessageResult notify(CBaseObject* sender, IdStringPtr message);
    virtual CBaseObject* newCopy() const { return nullptr; }
    // By the class's name; compares the texts. False for null.
    virtual bool isTypeOf(IdStringPtr name) const;

private:
    int32_t nbReference{1};
};

// Holds one reference. Null is allowed everywhere.
template <class I>
class SharedPointer {
public:
    SharedPointer(I* ptr = nullptr, bool remember = true) : ptr(ptr)
    {
        if (ptr && remember)
            ptr->remember();
    }
    SharedPointer(const SharedPointer& other) : SharedPointer(other.ptr) { }
    SharedPointer(SharedPointer&& other) noexcept : ptr(std::exchange(other.ptr, nullptr)) { }
    ~SharedPointer()
    {
        if (ptr)
            ptr->forget();
    }

    SharedPointer& operator=(I* pointer)
    {
        if (pointer != ptr)
            SharedPointer(pointer).swap(*this);
        return *this;
    }
    SharedPointer& operator=(const SharedPointer& other) { return *this = other.ptr; }
    SharedPointer& operator=(SharedPointer&& other) noexcept
    {
        SharedPointer(std::move(other)).swap(*this);
        return *this;
    }

    operator I*() const { return ptr; }
    I* operator->() const { return ptr; }
    I& operator*() const { return *ptr; }
    template <class T>
    T* cast() const
    {
        return dynamic_cast<T*>(ptr);
    }
    void swap(SharedPointer& other) noexcept { std::swap(ptr, other.ptr); }

private:
    I* ptr;
};

// Takes over the caller's reference.
template <class I>
SharedPointer<I> owned(I* pointer)
{
    return SharedPointer<I>(pointer, false);
}

// Takes over the reference of what it is constructed from and assigned.
template <class I>
class OwningPointer : public SharedPointer<I> {
public:
    OwningPointer(I* pointer = nullptr) : SharedPointer<I>(pointer, false) { }
    OwningPointer& operator=(I* pointer)
    {
        if (pointer != static_cast<I*>(*this))
            OwningPointer(pointer).swap(*this);
        return *this;
    }
};

// Keeps an object alive for a scope; null is allowed.
class CBaseObjectGuard {
public:
    explicit CBaseObjectGuard(CBaseObject* object) : object(object) { }

private:
    SharedPointer<CBaseObject> object;
};

}  // namespace VSTGUI

// isTypeOf and newCopy, for the public part of each class body.
#define VSTGUI_IS_TYPE_OF(Name, Parent)                                                            \
    bool isTypeOf(VSTGUI::IdStringPtr typeName) const override                                     \
    {                                                                                              \
        return VSTGUI::sameText(typeName, #Name) || Parent::isTypeOf(typeName);                    \
    }
#define CLASS_METHODS(Name, Parent)                                                                \
    VSTGUI_IS_TYPE_OF(Name, Parent)                                                                \
    VSTGUI::CBaseObject* newCopy() const override                                                  \
    {                                                                                              \
        return new Name(*this);                                                                    \
    }
#define CLASS_METHODS_NOCOPY(Name, Parent)                                                         \
    VSTGUI_IS_TYPE_OF(Name, Parent)                                                                \
    VSTGUI::CBaseObject* newCopy() const override                                                  \
    {                                                                                              \
        return nullptr;                                                                            \
    }
#define CLASS_METHODS_VIRTUAL(Name, Parent)                                                        \
    VSTGUI_IS_TYPE_OF(Name, Parent)                                                                \
    VSTGUI::CBaseObject* newCopy() const override = 0;

namespace VSTGUI {

// False when either is null.
bool sameText(UTF8StringPtr a, UTF8StringPtr b);

}  // namespace VSTGUI
