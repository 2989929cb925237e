// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/ScriptedSoundSystem.h"

namespace testbed {

using namespace Qt::StringLiterals;

template <typename Interface, typename Client> class ScriptedSoundSystem::Stream : public Interface {
public:
    using Place = Opened<Client> Shared::*;

    Stream(std::shared_ptr<Shared> shared, Place place, const sound::SampleSpec &spec, Client *client)
        : m_shared(std::move(shared))
        , m_place(place)
        , m_client(client)
    {
        (*m_shared).*m_place = {client, spec, false};
    }
    ~Stream() override
    {
        const Script script{m_shared.get()};
        if (((*m_shared).*m_place).client == m_client)
            ((*m_shared).*m_place).client = nullptr;
    }
    void pause() override { setPaused(true); }
    void resume() override { setPaused(false); }

private:
    void setPaused(bool paused)
    {
        const Script script{m_shared.get()};
        ((*m_shared).*m_place).paused = paused;
    }

    std::shared_ptr<Shared> m_shared;
    Place m_place;
    Client *m_client;
};

ScriptedSoundSystem::~ScriptedSoundSystem()
{
    const Script script = this->script();
    script->capture.client = nullptr;
    script->playback.client = nullptr;
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
    const Script script = this->script();
    script->devices = devices;
    if (script->devicesChanged)
        script->devicesChanged();
}

bool ScriptedSoundSystem::push(const void *data, std::size_t bytes)
{
    const Script script = this->script();
    if (!script->capture.client || script->capture.paused || script->captureLost)
        return false;
    script->capture.client->captured(data, bytes);
    return true;
}

bool ScriptedSoundSystem::pushHole(std::size_t bytes, KTAudioMissingCause cause)
{
    const Script script = this->script();
    if (!script->capture.client || script->capture.paused || script->captureLost)
        return false;
    script->capture.client->captureHole(bytes, cause);
    return true;
}

void ScriptedSoundSystem::loseCapture()
{
    const Script script = this->script();
    script->captureLost = true;
    if (script->capture.client)
        script->capture.client->captureLost();
}

void ScriptedSoundSystem::bringCaptureBack()
{
    const Script script = this->script();
    script->captureLost = false;
    if (script->capture.client)
        script->capture.client->captureBack();
}

QByteArray ScriptedSoundSystem::pull(std::size_t bytes)
{
    const Script script = this->script();
    if (!script->playback.client || script->playback.paused || script->draining)
        return {};
    QByteArray played(qsizetype(bytes), '\0');
    const sound::PlaybackFill filled = script->playback.client->fillPlayback(played.data(), bytes);
    script->draining = filled.atEnd;
    return played.first(qsizetype(filled.bytes));
}

void ScriptedSoundSystem::finishPlayback(sound::PlaybackEnd end)
{
    const Script script = this->script();
    if (auto *client = std::exchange(script->playback.client, nullptr))
        client->playbackEnded(end, end == sound::PlaybackEnd::Failed ? u"the script says so"_s : QString());
}

sound::Opened<sound::CaptureStream> ScriptedSoundSystem::openCapture(
    const QString &sourceKey, const sound::SampleSpec &spec, sound::CaptureClient *client, QDeadlineTimer)
{
    const Script script = this->script();
    if (script->refuse)
        return {nullptr, u"the script refuses"_s};
    script->captureKey = sourceKey;
    script->captureLost = false;
    return {std::make_unique<Stream<sound::CaptureStream, sound::CaptureClient>>(
                m_shared, &Shared::capture, spec, client),
        {}};
}

sound::Opened<sound::PlaybackStream> ScriptedSoundSystem::openPlayback(
    const sound::SampleSpec &spec, sound::PlaybackClient *client)
{
    const Script script = this->script();
    if (script->refuse)
        return {nullptr, u"the script refuses"_s};
    script->draining = false;
    return {std::make_unique<Stream<sound::PlaybackStream, sound::PlaybackClient>>(
                m_shared, &Shared::playback, spec, client),
        {}};
}

} // namespace testbed
