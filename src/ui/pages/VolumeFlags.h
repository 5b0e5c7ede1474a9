// Flags that break feedback loops between controls, their handlers and Windows. Not locks: GUI thread only.
#pragma once

struct VolumeFlags {
    bool volumeUpdating = false; // code is filling controls: their change handlers do nothing
    bool volumeSelfSet = false;  // the page itself sets the endpoint volume: the watcher's echo is ignored
};

// Sets a flag for the time of a scope and then restores what it was.
class FlagScope {
public:
    explicit FlagScope(bool &flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = before_; }
    FlagScope(const FlagScope &) = delete;
    FlagScope &operator=(const FlagScope &) = delete;

private:
    bool &flag_;
    bool before_;
};
