// A counted reference to an object that counts itself. (The standard library's shared pointer reports exhausted
// memory by an exception; this library is built without exceptions.)
#pragma once

#include <atomic>
#include <utility>

namespace kxonlinx {

class RefCounted
{
 public:
    RefCounted() noexcept = default;
    RefCounted(const RefCounted&) = delete;
    RefCounted& operator=(const RefCounted&) = delete;

    void addRef() noexcept { count_.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept
    {
        if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

 protected:
    virtual ~RefCounted() = default;

 private:
    std::atomic<int> count_{1};  // the maker's reference
};

template <typename T>
class Ref
{
 public:
    Ref() noexcept = default;
    // Takes over a reference that somebody counted already.
    static Ref adopt(T* object) noexcept
    {
        Ref ref;
        ref.object_ = object;
        return ref;
    }
    // Counts one of its own.
    static Ref share(T* object) noexcept
    {
        if (object) object->addRef();
        return adopt(object);
    }
    Ref(Ref&& other) noexcept : object_(other.detach()) {}
    Ref& operator=(Ref&& other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref()
    {
        if (object_) object_->release();
    }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    T* detach() noexcept { return std::exchange(object_, nullptr); }

 private:
    T* object_ = nullptr;
};

}  // namespace kxonlinx
