#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

#include <new>
#include <utility>

namespace TAV::Generic {

// The type-erased element of untyped sequences: a counted class object with
// its deviant, or a counted heap copy of a primitive value.
struct Ref {
    using RetainFn = void (*)(void* payload, bool increment);
    using EqualsFn = bool (*)(void const* a, void const* b);

    void* payload = nullptr;
    Deviant deviant;
    RetainFn retain = nullptr;
    EqualsFn equals = nullptr;

    Ref() = default;

    Ref(ReferenceCountingIntf* object, Deviant d) : payload(object), deviant(d), retain(&retainObject)
    {
        retainObject(payload, true);
    }

    template <class T>
    static Ref fromValue(T const& value)
    {
        Ref ref;
        ref.payload = Box<T>::make(value);
        ref.retain = &Box<T>::retain;
        ref.equals = &Box<T>::equals;
        return ref;
    }

    Ref(Ref const& other) : payload(other.payload), deviant(other.deviant), retain(other.retain), equals(other.equals)
    {
        if (retain)
            retain(payload, true);
    }

    Ref(Ref&& other) noexcept
        : payload(std::exchange(other.payload, nullptr)), deviant(other.deviant),
          retain(std::exchange(other.retain, nullptr)), equals(std::exchange(other.equals, nullptr))
    {
    }

    Ref& operator=(Ref other) noexcept
    {
        std::swap(payload, other.payload);
        std::swap(deviant, other.deviant);
        std::swap(retain, other.retain);
        std::swap(equals, other.equals);
        return *this;
    }

    ~Ref()
    {
        if (retain)
            retain(payload, false);
    }

    ReferenceCountingIntf* object() const { return equals ? nullptr : static_cast<ReferenceCountingIntf*>(payload); }

    template <class T>
    T const& value() const
    {
        return static_cast<Box<T> const*>(payload)->value;
    }

    // Class objects compare by pointer, primitives by their operator==.
    friend bool operator==(Ref const& a, Ref const& b)
    {
        if (a.equals != b.equals)
            return false;
        return a.equals ? a.equals(a.payload, b.payload) : a.payload == b.payload;
    }

private:
    static void retainObject(void* payload, bool increment)
    {
        if (!payload)
            return;
        auto* const object = static_cast<ReferenceCountingIntf*>(payload);
        if (increment)
            object->incRef();
        else
            object->decRef();
    }

    // The count word sits behind the value.
    template <class T>
    struct Box {
        T value;
        long count;

        static Box* make(T const& v) { return new Box{v, 1}; }
        static void retain(void* payload, bool increment)
        {
            auto* const box = static_cast<Box*>(payload);
            if (increment)
                ++box->count;
            else if (box->count-- == 1)
                delete box;
        }
        static bool equals(void const* a, void const* b)
        {
            return static_cast<Box const*>(a)->value == static_cast<Box const*>(b)->value;
        }
    };
};

} // namespace TAV::Generic
