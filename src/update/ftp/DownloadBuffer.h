// The memory of one download: exactly the announced size, zeroed, filled from the front.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

class DownloadBuffer {
public:
    DownloadBuffer() noexcept = default;
    DownloadBuffer(DownloadBuffer &&other) noexcept { swap(other); } // leaves the other one empty
    DownloadBuffer &operator=(DownloadBuffer &&other) noexcept {
        DownloadBuffer moved(std::move(other));
        swap(moved);
        return *this;
    }

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
        return {bytes_.get() + filled_, left < limit ? left : limit};
    }
    // Counts bytes that have been put there, count <= room's size.
    void fill(size_t count) noexcept { filled_ += count; }

    const uint8_t *data() const noexcept { return bytes_.get(); } // null before allocate
    size_t size() const noexcept { return size_; }

private:
    void swap(DownloadBuffer &other) noexcept {
        std::swap(bytes_, other.bytes_);
        std::swap(size_, other.size_);
        std::swap(filled_, other.filled_);
    }

    struct Free {
        void operator()(uint8_t *bytes) const noexcept { std::free(bytes); }
    };
    std::unique_ptr<uint8_t[], Free> bytes_;
    size_t size_ = 0;
    size_t filled_ = 0;
};
