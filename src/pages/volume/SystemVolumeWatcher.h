// Tells when the volume or the mute state of the default playback device changes in Windows, whoever changed
// it, and goes over to another device when that becomes the default one. Created and destroyed on the GUI
// thread. The signals are emitted on a thread of the audio system, so connect them automatically to an object
// of the GUI thread. Without a playback device the watcher waits for one.
#pragma once

#include <atomic>
#include <memory>
#include <QObject>
#include <wrl/client.h>

struct IAudioEndpointVolume;
struct IMMDeviceEnumerator;

// Balances CoInitialize of the calling thread; a thread that is in another kind of apartment is left as it
// is.
class ComApartment {
public:
    ComApartment();
    ~ComApartment();
    ComApartment(const ComApartment &) = delete;
    ComApartment &operator=(const ComApartment &) = delete;

private:
    bool entered_;
};

class SystemVolumeWatcher : public QObject {
    Q_OBJECT

public:
    explicit SystemVolumeWatcher(QObject *parent = nullptr);
    ~SystemVolumeWatcher() override;

signals:
    void volumeChanged(int newVolume); // percent, 0..100; only while the device is not muted
    void muteChanged(bool isMuted);    // with every notification

private:
    class VolumeCallback;
    class DefaultDeviceCallback;
    // Counts the default devices that there have been: what belongs to an earlier one is outdated.
    using Generation = std::atomic<unsigned>;

    void watchDefaultEndpoint();
    void leaveEndpoint();

    // Declared in the order of creation, released in the reverse one; null where creation was not reached.
    ComApartment apartment_;
    Microsoft::WRL::ComPtr<IMMDeviceEnumerator> enumerator;
    Microsoft::WRL::ComPtr<IAudioEndpointVolume> endpointVolume;
    Microsoft::WRL::ComPtr<VolumeCallback> callback;

    std::shared_ptr<Generation> generation_ = std::make_shared<Generation>(0);
    Microsoft::WRL::ComPtr<DefaultDeviceCallback> defaultDeviceCallback_;
};
