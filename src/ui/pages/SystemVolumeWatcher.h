// Tells when the volume or the mute state of the default playback device changes in Windows, whoever changed
// it. Created and destroyed on the GUI thread. The signals are emitted on a thread of the audio system, so
// connect them automatically to an object of the GUI thread. Without a playback device the watcher exists and
// stays silent.
#pragma once

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

    // Declared in the order of creation, released in the reverse one; null where creation was not reached.
    ComApartment apartment_;
    Microsoft::WRL::ComPtr<IMMDeviceEnumerator> enumerator;
    Microsoft::WRL::ComPtr<IAudioEndpointVolume> endpointVolume;
    Microsoft::WRL::ComPtr<VolumeCallback> callback;
};
