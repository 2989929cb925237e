// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// What a frame of the flip costs, as a table: once for each scale factor, in a process of its own.
//
//     flip_frames            prints the table
//     flip_frames SCALE      measures in this process and prints one row

#include "testbed/Waiting.h"
#include "ui/CardWindow.h"
#include "ui/flip/FlipPermission.h"
#include "ui/flip/FliprView.h"
#include "ui/flip/NSWindow_Flipr.h"
#include "ui/flip/Stage.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryFile>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

std::atomic<long> allocations;
std::atomic<long> allocatedBytes;

void countAllocation(std::size_t bytes)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    allocatedBytes.fetch_add(static_cast<long>(bytes), std::memory_order_relaxed);
}

} // namespace

// The sanitizers bring an allocator of their own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): these are the C library's own names
void *__libc_malloc(std::size_t);
void *__libc_realloc(void *, std::size_t);
void *__libc_calloc(std::size_t, std::size_t);
// NOLINTEND(bugprone-reserved-identifier)

void *malloc(std::size_t size) noexcept
{
    countAllocation(size);
    return __libc_malloc(size);
}

void *realloc(void *block, std::size_t size) noexcept
{
    countAllocation(size);
    return __libc_realloc(block, size);
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    countAllocation(count * size);
    return __libc_calloc(count, size);
}
}
#endif

namespace {

constexpr int frames = 400;
constexpr int warmUpFrames = 20;

struct Cost {
    // By the clock, and of the processor's time alone, which other programs do not lengthen.
    double elapsed;
    double processor;
    long allocations;
    long bytes;
};

double milliseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

Cost frameCost(FliprView &view, float progress)
{
    view.animation()->setCurrentProgress(progress);
    const long allocationsBefore = allocations, bytesBefore = allocatedBytes;
    const double processorBefore = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    const double before = milliseconds(CLOCK_MONOTONIC);
    view.display();
    const double elapsed = milliseconds(CLOCK_MONOTONIC) - before;
    const double processor = milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processorBefore;
    return {elapsed, processor, allocations - allocationsBefore, allocatedBytes - bytesBefore};
}

template <typename Value> Value percentile(std::vector<Cost> &costs, Value Cost::*member, double share)
{
    const auto place = costs.begin() + static_cast<std::ptrdiff_t>(share * double(costs.size() - 1));
    std::nth_element(costs.begin(), place, costs.end(),
        [member](const Cost &a, const Cost &b) { return a.*member < b.*member; });
    return *place.*member;
}

int measure(const char *scale)
{
    Stage stage;
    // What is on a card costs nothing in a frame: its picture is taken once.
    CardWindow front(CardWindow::MinimiseButton | CardWindow::CloseButton);
    CardWindow back;
    const auto always = FlipPermission::judge().replace([] { return true; });
    stage.addCard(&front);
    stage.move(100, 100);
    stage.show();
    NSWindow_Flipr::flipToShowWindow(&front, &back, true);
    auto *view = NSWindow_Flipr::flippingWindow()->findChild<FliprView *>();
    if (!testbed::waitUntil([view] { return view->animation()->isAnimating(); }))
        return 1;
    view->animation()->stopAnimation();

    std::vector<Cost> costs;
    for (int frame = -warmUpFrames; frame < frames; ++frame) {
        const Cost cost = frameCost(*view, static_cast<float>(std::max(frame, 0)) / frames);
        if (frame >= 0)
            costs.push_back(cost);
    }
    std::printf("| %s | %.2f | %.2f | %.2f | %.2f | %ld | %.1f |\n", scale,
        percentile(costs, &Cost::elapsed, 0.5), percentile(costs, &Cost::elapsed, 0.95),
        percentile(costs, &Cost::processor, 0.5), percentile(costs, &Cost::processor, 0.95),
        percentile(costs, &Cost::allocations, 0.5), double(percentile(costs, &Cost::bytes, 0.5)) / 1024);
    return 0;
}

// The offscreen platform's own screen is too small for a card at scale 3, and what is off screen is not
// drawn.
bool describeScreen(QTemporaryFile &file)
{
    return file.open()
        && file.write(R"({"screens": [{"name": "Screen", "x": 0, "y": 0, "width": 4200, "height": 3600,
            "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
        > 0
        && file.flush();
}

int measureInProcess(const QString &program, const QString &scale)
{
    QTemporaryFile screen;
    if (!describeScreen(screen))
        return 1;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
    environment.insert(
        QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + screen.fileName());
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, {scale});
    constexpr int deadlineMilliseconds = 120000;
    if (!process.waitForFinished(deadlineMilliseconds) || process.exitCode() != 0)
        return 1;
    std::fputs(process.readAllStandardOutput().constData(), stdout);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc == 2)
        return measure(argv[1]);
    std::puts("| scale | median ms | 95 % ms | processor, median ms | processor, 95 % ms | "
              "allocations | KiB allocated |\n|---|---|---|---|---|---|---|");
    int failures = 0;
    for (const char *scale : {"1", "2", "3"})
        failures += measureInProcess(QApplication::applicationFilePath(), QString::fromLatin1(scale));
    return failures;
}
