// The memory of one download: exactly the announced size, zeroed, filled from the front.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
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

    // The place for the next bytes: at most limit of them, none when the buffer is full.
    struct Room {
        uint8_t *start;
        size_t size;
    };
    Room room(size_t limit) noexcept {
        const size_t left = size_ - filled_;
        const Room next{bytes_.get() + filled_, left < limit ? left : limit};
        // Under Wine a receive reads the memory before it writes to it: two page faults for an untouched
        // page.
        constexpr size_t kPageSize = 4096;
        for (; touched_ < filled_ + next.size; touched_ += kPageSize)
            *const_cast<volatile uint8_t *>(bytes_.get() + touched_) = 0;
        return next;
    }
    // Counts bytes that have been put there, count <= room's size.
    void fill(size_t count) noexcept { filled_ += count; }

    const uint8_t *data() const noexcept { return bytes_.get(); } // null before allocate
    size_t size() const noexcept { return size_; }

private:
    struct Free {
        void operator()(uint8_t *bytes) const noexcept { std::free(bytes); }
    };
    std::unique_ptr<uint8_t[], Free> bytes_;
    size_t size_ = 0;
    size_t filled_ = 0;
    size_t touched_ = 0; // no byte from here on has been written to
};
