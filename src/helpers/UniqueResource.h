// Move-only owner of one operating-system resource. Traits give the type, the empty value and the release:
//     struct Traits { using Type = HANDLE; static Type empty(); static void release(Type); };
#pragma once

#include <utility>

template<typename Traits>
class UniqueResource {
public:
    using Type = typename Traits::Type;

    UniqueResource() noexcept = default;
    explicit UniqueResource(Type value) noexcept : value_(value) {}
    UniqueResource(UniqueResource &&other) noexcept : value_(other.release()) {}
    UniqueResource &operator=(UniqueResource &&other) noexcept {
        reset(other.release());
        return *this;
    }
    UniqueResource(const UniqueResource &) = delete;
    UniqueResource &operator=(const UniqueResource &) = delete;
    ~UniqueResource() { reset(); }

    Type get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != Traits::empty(); }

    Type release() noexcept { return std::exchange(value_, Traits::empty()); }
    void reset(Type value = Traits::empty()) noexcept {
        const Type old = std::exchange(value_, value);
        if (old != Traits::empty() && old != value)
            Traits::release(old);
    }
    // For functions that return the resource through a pointer.
    Type *put() noexcept {
        reset();
        return &value_;
    }

private:
    Type value_ = Traits::empty();
};
