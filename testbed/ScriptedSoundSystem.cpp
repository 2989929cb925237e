// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/ScriptedSoundSystem.h"

namespace testbed {

using namespace Qt::StringLiterals;

// Recursive, because a client may look at the script from inside a call.
struct ScriptedSoundSystem::Shared {
    mutable std::recursive_mutex lock;
    sound::DeviceList devices;
    std::function<void()> devicesChanged;
    bool refuse = false;

    sound::CaptureClient *capture = nullptr;
    QString captureKey;
    sound::SampleSpec captureSpec;
    bool capturePaused = false;
    bool captureLost = false;

    sound::PlaybackClient *playback = nullptr;
    sound::SampleSpec playbackSpec;
    bool playbackPaused = false;
    bool draining = false;
};

class ScriptedSoundSystem::Capture : public sound::CaptureStream {
public:
    Capture(std::shared_ptr<Shared> shared, sound::CaptureClient *client)
        : m_shared(std::move(shared))
        , m_client(client)
    {
    }
    ~Capture() override
    {
        std::scoped_lock lock(m_shared->lock);
        if (m_shared->capture == m_client)
            m_shared->capture = nullptr;
    }
    void pause() override { setPaused(true); }
    void resume() override { setPaused(false); }

private:
    void setPaused(bool paused)
    {
        std::scoped_lock lock(m_shared->lock);
        m_shared->capturePaused = paused;
    }

    std::shared_ptr<Shared> m_shared;
    sound::CaptureClient *m_client;
};

class ScriptedSoundSystem::Playback : public sound::PlaybackStream {
public:
    Playback(std::shared_ptr<Shared> shared, sound::PlaybackClient *client)
        : m_shared(std::move(shared))
        , m_client(client)
    {
    }
    ~Playback() override
    {
        std::scoped_lock lock(m_shared->lock);
        if (m_shared->playback == m_client)
            m_shared->playback = nullptr;
    }
    void pause() override { setPaused(true); }
    void resume() override { setPaused(false); }

private:
    void setPaused(bool paused)
    {
        std::scoped_lock lock(m_shared->lock);
        m_shared->playbackPaused = paused;
    }

    std::shared_ptr<Shared> m_shared;
    sound::PlaybackClient *m_client;
};

ScriptedSoundSystem::ScriptedSoundSystem()
    : m_shared(std::make_shared<Shared>())
{
}

ScriptedSoundSystem::~ScriptedSoundSystem()
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->capture = nullptr;
    m_shared->playback = nullptr;
}

void ScriptedSoundSystem::setDevices(const QStringList &names)
{
    sound::DeviceList devices;
    for (const QString &name : names)
        devices.sources.append({u"key:"_s + name, name, false});
    if (!names.isEmpty())
        devices.defaultKey = devices.sources.first().key;
    setDevices(devices);
}

void ScriptedSoundSystem::setDevices(const sound::DeviceList &devices)
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->devices = devices;
    if (m_shared->devicesChanged)
        m_shared->devicesChanged();
}

void ScriptedSoundSystem::setRefuseStarts(bool refuse)
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->refuse = refuse;
}

bool ScriptedSoundSystem::captureOpen() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->capture;
}

bool ScriptedSoundSystem::capturePaused() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->capture && m_shared->capturePaused;
}

QString ScriptedSoundSystem::captureSourceKey() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->captureKey;
}

sound::SampleSpec ScriptedSoundSystem::captureSpec() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->captureSpec;
}

bool ScriptedSoundSystem::playbackOpen() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->playback;
}

bool ScriptedSoundSystem::playbackPaused() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->playback && m_shared->playbackPaused;
}

sound::SampleSpec ScriptedSoundSystem::playbackSpec() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->playbackSpec;
}

bool ScriptedSoundSystem::push(const void *data, std::size_t bytes)
{
    std::scoped_lock lock(m_shared->lock);
    if (!m_shared->capture || m_shared->capturePaused || m_shared->captureLost)
        return false;
    m_shared->capture->captured(data, bytes);
    return true;
}

bool ScriptedSoundSystem::pushHole(std::size_t bytes)
{
    return push(nullptr, bytes);
}

void ScriptedSoundSystem::loseCapture()
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->captureLost = true;
    if (m_shared->capture)
        m_shared->capture->captureLost();
}

void ScriptedSoundSystem::bringCaptureBack()
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->captureLost = false;
    if (m_shared->capture)
        m_shared->capture->captureBack();
}

QByteArray ScriptedSoundSystem::pull(std::size_t bytes)
{
    std::scoped_lock lock(m_shared->lock);
    if (!m_shared->playback || m_shared->playbackPaused || m_shared->draining)
        return {};
    QByteArray sound(qsizetype(bytes), '\0');
    const std::size_t filled = m_shared->playback->fillPlayback(sound.data(), bytes);
    m_shared->draining = filled < bytes;
    return sound.first(qsizetype(filled));
}

bool ScriptedSoundSystem::playbackDraining() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->playback && m_shared->draining;
}

void ScriptedSoundSystem::finishPlayback(sound::PlaybackEnd end)
{
    std::scoped_lock lock(m_shared->lock);
    if (auto *client = std::exchange(m_shared->playback, nullptr))
        client->playbackEnded(end);
}

sound::DeviceList ScriptedSoundSystem::devices() const
{
    std::scoped_lock lock(m_shared->lock);
    return m_shared->devices;
}

void ScriptedSoundSystem::setDevicesChanged(std::function<void()> changed)
{
    std::scoped_lock lock(m_shared->lock);
    m_shared->devicesChanged = std::move(changed);
}

sound::Opened<sound::CaptureStream> ScriptedSoundSystem::openCapture(
    const QString &sourceKey, const sound::SampleSpec &spec, sound::CaptureClient *client)
{
    std::scoped_lock lock(m_shared->lock);
    if (m_shared->refuse)
        return {nullptr, u"the script refuses"_s};
    m_shared->capture = client;
    m_shared->captureKey = sourceKey;
    m_shared->captureSpec = spec;
    m_shared->capturePaused = false;
    m_shared->captureLost = false;
    return {std::make_unique<Capture>(m_shared, client), {}};
}

sound::Opened<sound::PlaybackStream> ScriptedSoundSystem::openPlayback(
    const sound::SampleSpec &spec, sound::PlaybackClient *client)
{
    std::scoped_lock lock(m_shared->lock);
    if (m_shared->refuse)
        return {nullptr, u"the script refuses"_s};
    m_shared->playback = client;
    m_shared->playbackSpec = spec;
    m_shared->playbackPaused = false;
    m_shared->draining = false;
    return {std::make_unique<Playback>(m_shared, client), {}};
}

} // namespace testbed
