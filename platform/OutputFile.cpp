// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OutputFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <mutex>
#include <sys/file.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr mode_t permissions = 0666; // less what the user's mask takes away
constexpr qsizetype knownBeginning = 256;
constexpr qint64 copiedAtOnce = 256LL * 1024;

struct Identity {
    dev_t device;
    ino_t inode;
    bool operator==(const Identity &) const = default;
};

struct OwnFile {
    Identity identity;
    int descriptor;
    std::shared_ptr<OutputFile::Share> share;
};

// The files that this process holds. A second lock of the same process would be refused like any other, so
// that a second opening gets another descriptor of the first one's opening instead.
struct OwnFiles {
    std::mutex mutex;
    std::vector<OwnFile> files;
};

OwnFiles &ownFiles()
{
    static auto *const files = new OwnFiles; // descriptors stay open until the process exits
    return *files;
}

bool identify(int descriptor, Identity &identity)
{
    struct stat file = {};
    if (fstat(descriptor, &file) != 0)
        return false;
    identity = {file.st_dev, file.st_ino};
    return true;
}

// Another descriptor of the opening that this process already has; -1 where it has none.
int ownDescriptor(const Identity &identity)
{
    const std::scoped_lock lock(ownFiles().mutex);
    const auto own = std::ranges::find(ownFiles().files, identity, &OwnFile::identity);
    return own == ownFiles().files.end() ? -1 : fcntl(own->descriptor, F_DUPFD_CLOEXEC, 0);
}

// All others that have this file open, and write to it, the latest first: so nobody waits for an earlier one
// that waits for a later one.
std::vector<std::shared_ptr<OutputFile::Share>> others(int descriptor)
{
    std::vector<std::shared_ptr<OutputFile::Share>> shares;
    Identity identity = {};
    if (!identify(descriptor, identity))
        return shares;
    const std::scoped_lock lock(ownFiles().mutex);
    for (const OwnFile &file : ownFiles().files) {
        if (file.identity == identity && file.descriptor != descriptor && !file.share->isTakenOver)
            shares.push_back(file.share);
    }
    std::ranges::sort(shares, std::greater(), [](const auto &share) { return share->number; });
    return shares;
}

void closeOwn(int descriptor)
{
    {
        const std::scoped_lock lock(ownFiles().mutex);
        std::erase_if(ownFiles().files, [&](const auto &file) { return file.descriptor == descriptor; });
    }
    ::close(descriptor);
}

// Copies from the same place to the same place. Where `from` can no longer be read, `end` becomes the end of
// what could be; false when `to` cannot be written to.
bool copy(int from, int to, qint64 begin, qint64 &end)
{
    QByteArray bytes(copiedAtOnce, Qt::Uninitialized);
    while (begin < end) {
        const ssize_t got = pread(from, bytes.data(), size_t(std::min(copiedAtOnce, end - begin)), begin);
        if (got <= 0) {
            end = begin;
            break;
        }
        for (ssize_t put = 0; put < got;) {
            const ssize_t size = pwrite(to, bytes.constData() + put, size_t(got - put), begin + put);
            if (size <= 0)
                return false;
            put += size;
        }
        begin += got;
    }
    return true;
}

} // namespace

OutputFile::OutputFile(QByteArray path)
    : m_path(std::move(path))
{
}

OutputFile::~OutputFile()
{
    m_thread.release();
    close();
}

// Programs that are started meanwhile do not inherit it.
int OutputFile::descriptorFor(int flags) const
{
    return ::open(m_path.constData(), flags | O_RDWR | O_CLOEXEC | O_NOCTTY, permissions);
}

int OutputFile::open()
{
    m_thread.assertSameThread();
    if (m_path.contains('\0'))
        return EINVAL;
    int descriptor = descriptorFor(0);
    if (descriptor < 0 && errno == ENOENT) {
        descriptor = descriptorFor(O_CREAT | O_EXCL);
        m_isCreated = descriptor >= 0;
        if (descriptor < 0 && errno == EEXIST)
            descriptor = descriptorFor(0);
    }
    if (descriptor < 0)
        return errno;
    Identity identity = {};
    const int own = identify(descriptor, identity) ? ownDescriptor(identity) : -1;
    if (own >= 0)
        ::close(std::exchange(descriptor, own));
    else if (const int error = lock(descriptor)) {
        ::close(descriptor);
        return error;
    }
    replaceBy(descriptor);
    return 0;
}

int OutputFile::lock(int descriptor)
{
    return flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK ? EBUSY : 0;
}

int OutputFile::takeOver(const std::function<bool()> &isWanted)
{
    m_thread.assertSameThread();
    auto before = others(m_descriptor);
    std::erase_if(before, [this](const auto &share) { return share->number > m_share->number; });
    const std::scoped_lock lock(m_share->writing);
    std::vector<std::unique_lock<std::mutex>> atRest;
    atRest.reserve(before.size());
    for (const auto &share : before)
        atRest.emplace_back(share->writing);
    if (!isWanted())
        return ECANCELED;
    if (isTakenOver())
        return 0;
    if (const int error = truncate())
        return error;
    for (const auto &share : before)
        share->isTakenOver = true;
    return 0;
}

int OutputFile::truncate()
{
    struct stat file = {};
    if (fstat(m_descriptor, &file) == 0 && (file.st_size == 0 || !S_ISREG(file.st_mode)))
        return 0;
    return ftruncate(m_descriptor, 0) == 0 ? 0 : errno;
}

void OutputFile::undo()
{
    m_thread.assertSameThread();
    if (m_descriptor >= 0 && m_isCreated && isMineAlone())
        unlink(m_path.constData());
    close();
}

// Another file may have its name by now, and another start of this process may write to it.
bool OutputFile::isMineAlone() const
{
    struct stat there = {};
    Identity here = {};
    return identify(m_descriptor, here) && lstat(m_path.constData(), &there) == 0
        && here == Identity{there.st_dev, there.st_ino} && others(m_descriptor).empty();
}

void OutputFile::close()
{
    m_thread.assertSameThread();
    if (m_descriptor >= 0)
        closeOwn(std::exchange(m_descriptor, -1));
}

ssize_t OutputFile::write(const iovec *parts, int count, qint64 offset)
{
    m_thread.assertSameThread();
    const std::scoped_lock lock(m_share->writing);
    if (isTakenOver())
        return ssize_t(parts[0].iov_len + (count > 1 ? parts[1].iov_len : 0));
    const ssize_t size = pwritev(m_descriptor, parts, count, offset);
    if (size > 0 && offset == m_beginning.size() && offset < knownBeginning) {
        const qsizetype known
            = std::min({knownBeginning - qsizetype(offset), qsizetype(size), qsizetype(parts->iov_len)});
        m_beginning.append(static_cast<const char *>(parts->iov_base), known);
    }
    return size;
}

bool OutputFile::isGone() const
{
    m_thread.assertSameThread();
    struct stat file = {};
    return !isTakenOver() && fstat(m_descriptor, &file) == 0 && file.st_nlink == 0;
}

bool OutputFile::beginsLikeThis(int descriptor) const
{
    QByteArray beginning(m_beginning.size(), '\0');
    const ssize_t size = pread(descriptor, beginning.data(), size_t(beginning.size()), 0);
    return size > 0 && m_beginning.startsWith(beginning.first(size));
}

bool OutputFile::findAgain(qint64 &written)
{
    m_thread.assertSameThread();
    const std::scoped_lock changing(m_share->writing);
    if (isTakenOver())
        return false;
    Identity here = {};
    const bool isHere = identify(m_descriptor, here);
    const bool isGoneFromHere = !isHere || isGone();
    int descriptor = descriptorFor(0);
    Identity there = {};
    qint64 begin = 0;
    bool isCreated = false;
    if (descriptor >= 0) {
        // Where it was, or another's file that has its name now.
        const bool isSame = identify(descriptor, there) && isHere && here == there;
        if (isSame || !beginsLikeThis(descriptor)) {
            ::close(descriptor);
            return false;
        }
        begin = lseek(descriptor, 0, SEEK_END);
    } else if (errno == ENOENT && isGoneFromHere) {
        descriptor = descriptorFor(O_CREAT | O_EXCL);
        isCreated = descriptor >= 0;
    }
    if (descriptor < 0)
        return false;
    qint64 complete = written;
    if (lock(descriptor) != 0 || !copy(m_descriptor, descriptor, std::min(begin, written), complete)) {
        if (isCreated)
            unlink(m_path.constData());
        ::close(descriptor);
        return false;
    }
    written = complete;
    replaceBy(descriptor);
    return true;
}

void OutputFile::replaceBy(int descriptor)
{
    close();
    m_descriptor = descriptor;
    Identity identity = {};
    if (!identify(descriptor, identity))
        return;
    const std::scoped_lock lock(ownFiles().mutex);
    ownFiles().files.push_back({identity, descriptor, m_share});
}

} // namespace platform
