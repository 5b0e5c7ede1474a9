// The memory of one download: exactly the announced size, zeroed, filled from the front. What the server
// sends beyond that size is dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

class DownloadBuffer {
public:
    // False when there is not that much memory. The system gives zeroed pages when they are first touched, so
    // a size that the server only claims costs nothing.
    bool allocate(size_t size) noexcept {
        *this = {};
        bytes_.reset(static_cast<uint8_t *>(std::calloc(size > 0 ? size : 1, 1)));
        size_ = bytes_ ? size : 0;
        return bytes_ != nullptr;
    }

    void append(const void *bytes, size_t count) noexcept {
        const size_t room = size_ - filled_;
        const size_t taken = count < room ? count : room;
        if (taken > 0)
            std::memcpy(bytes_.get() + filled_, bytes, taken);
        filled_ += taken;
    }

    const uint8_t *data() const noexcept { return bytes_.get(); } // null before allocate
    size_t size() const noexcept { return size_; }

private:
    struct Free {
        void operator()(uint8_t *bytes) const noexcept { std::free(bytes); }
    };
    std::unique_ptr<uint8_t[], Free> bytes_;
    size_t size_ = 0;
    size_t filled_ = 0;
};
