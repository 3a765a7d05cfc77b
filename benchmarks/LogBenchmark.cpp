// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// The time of one log statement, in two comparisons.
//
// boundLogger and spdlogSink, on 1, 2, 4 and 8 threads: a bound logger whose message reaches a log
// delegate, and spdlog with a sink that makes the same QStrings and calls the same delegate.
//
// unboundLogger and spdlogNullSink, on one thread: a logger that is not bound, and spdlog with its
// null sink. Both drop the message.

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <QString>

#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include <benchmark/benchmark.h>
#include <memory>
#include <mutex>
#include <string>

namespace {

using namespace Vyn;

struct Consumer : Core::Log::LogDelegate {
    void log(int level, const QString &context, const QString &message) override
    {
        benchmark::DoNotOptimize(level + context.size() + message.size());
    }
};

class QStringSink final : public spdlog::sinks::base_sink<std::mutex> {
public:
    explicit QStringSink(std::shared_ptr<Core::Log::LogDelegate> delegate)
        : mDelegate(std::move(delegate))
    {
    }

protected:
    void sink_it_(const spdlog::details::log_msg &msg) override
    {
        // The least that such a sink does: it converts two texts. The caller has already composed
        // the whole context and passes it as the name of the function.
        mDelegate->log(msg.level >= spdlog::level::err ? 2 : 0,
            QString::fromUtf8(msg.source.funcname),
            QString::fromUtf8(msg.payload.data(), static_cast<qsizetype>(msg.payload.size())));
    }
    void flush_() override {}

private:
    std::shared_ptr<Core::Log::LogDelegate> mDelegate;
};

void message(benchmark::State &state, const Logger &logger)
{
    int i = 0;
    for (auto _ : state) {
        logger.info(LOG_CONTEXT) << "Imported the mesh with triangles: " << ++i;
    }
    state.SetItemsProcessed(state.iterations());
}

void threads(benchmark::internal::Benchmark *contender)
{
    contender->Threads(1)->Threads(2)->Threads(4)->Threads(8)->UseRealTime();
}

void boundLogger(benchmark::State &state)
{
    static const Core::Log::ScopedPushLogDelegate registration(std::make_shared<Consumer>());
    static const Logger logger = [] {
        Logger bound;
        Core::Log::bindLogger(bound, QStringLiteral("Debug: "));
        return bound;
    }();
    message(state, logger);
}
BENCHMARK(boundLogger)->Apply(threads);

void unboundLogger(benchmark::State &state)
{
    message(state, Logger());
}
BENCHMARK(unboundLogger);

void spdlogMessage(benchmark::State &state, spdlog::logger &logger)
{
    const std::string context = "Debug: " + LOG_CONTEXT;
    const spdlog::source_loc place("", 1, context.c_str());
    int i = 0;
    for (auto _ : state) {
        logger.log(place, spdlog::level::info, "Imported the mesh with triangles: {}", ++i);
    }
    state.SetItemsProcessed(state.iterations());
}

void spdlogSink(benchmark::State &state)
{
    static spdlog::logger logger(
        "core", std::make_shared<QStringSink>(std::make_shared<Consumer>()));
    spdlogMessage(state, logger);
}
BENCHMARK(spdlogSink)->Apply(threads);

void spdlogNullSink(benchmark::State &state)
{
    spdlog::logger logger("core", std::make_shared<spdlog::sinks::null_sink_mt>());
    spdlogMessage(state, logger);
}
BENCHMARK(spdlogNullSink);

} // namespace

BENCHMARK_MAIN();
