#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

#include <cstring>
#include <new>
#include <utility>

namespace TAV::Generic {

// How a Ref keeps and compares what it holds. Each module that makes refs has its own
// copy of a type's table, so tables of one type are told apart by their type key.
struct RefOps {
    void (*retain)(void* payload, bool increment);
    bool (*equals)(void const* a, void const* b); // null for class objects: identity
    char const* typeKey;
};

// The type-erased element of untyped sequences: a counted class object with
// its deviant, or a counted heap copy of a primitive value.
struct Ref {
    void* payload = nullptr;
    Deviant deviant;
    RefOps const* ops = nullptr;

    Ref() = default;

    Ref(ReferenceCountingIntf* object, Deviant d) : payload(object), deviant(d), ops(&sObjectOps)
    {
        retainObject(payload, true);
    }

    template <class T>
    static Ref fromValue(T const& value)
    {
        Ref ref;
        ref.payload = Box<T>::make(value);
        ref.ops = &Box<T>::sOps;
        return ref;
    }

    Ref(Ref const& other) : payload(other.payload), deviant(other.deviant), ops(other.ops)
    {
        if (ops)
            ops->retain(payload, true);
    }

    Ref(Ref&& other) noexcept
        : payload(std::exchange(other.payload, nullptr)), deviant(other.deviant), ops(std::exchange(other.ops, nullptr))
    {
    }

    Ref& operator=(Ref other) noexcept
    {
        std::swap(payload, other.payload);
        std::swap(deviant, other.deviant);
        std::swap(ops, other.ops);
        return *this;
    }

    ~Ref()
    {
        if (ops)
            ops->retain(payload, false);
    }

    bool isValue() const { return ops && ops->equals; }
    ReferenceCountingIntf* object() const { return isValue() ? nullptr : static_cast<ReferenceCountingIntf*>(payload); }

    template <class T>
    T const& value() const
    {
        return static_cast<Box<T> const*>(payload)->value;
    }

    // Class objects compare by pointer, primitives of one type by their operator==.
    friend bool operator==(Ref const& a, Ref const& b)
    {
        if (a.isValue() != b.isValue())
            return false;
        if (!a.isValue())
            return a.payload == b.payload;
        if (a.ops != b.ops && std::strcmp(a.ops->typeKey, b.ops->typeKey) != 0)
            return false;
        return a.ops->equals(a.payload, b.payload);
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
    static constexpr RefOps sObjectOps{&retainObject, nullptr, "object"};

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
        // The same text in every module built by one compiler: it spells the type out.
        static constexpr char const* typeKey() { return __PRETTY_FUNCTION__; }
        static constexpr RefOps sOps{&retain, &equals, typeKey()};
    };
};

} // namespace TAV::Generic
