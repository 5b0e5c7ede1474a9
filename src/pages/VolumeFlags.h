// Flags that break feedback loops between controls, their handlers and Windows. Not locks: GUI thread only.
#pragma once

struct VolumeFlags {
    // Code is filling controls, of whatever page: their change handlers do nothing.
    bool volumeUpdating = false;
    // The volume page is setting the endpoint volume: reports that come before it is done are ignored. See
    // VolumeEchoes for those that come later.
    bool volumeSelfSet = false;
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
