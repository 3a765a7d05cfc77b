// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>

#include <QString>

#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Vyn::Test {

struct Record {
    int level;
    std::string context;
    std::string message;

    bool operator==(const Record &) const = default;
    friend void PrintTo(const Record &record, std::ostream *out)
    {
        *out << record.level << " [" << record.context << "] " << record.message;
    }
};

/// Keeps every record of the log manager for as long as it lives; binds the loggers when first
/// used.
class RecordedLog {
public:
    RecordedLog()
        : mRecorder(std::make_shared<Recorder>())
        , mRegistration(mRecorder)
    {
        [[maybe_unused]] static const bool bound = (OvraBase::bindLoggers(), true);
    }

    std::vector<Record> records() const
    {
        const std::lock_guard lock(mRecorder->mutex);
        return mRecorder->records;
    }

    /// Returns the records and forgets them.
    std::vector<Record> take()
    {
        const std::lock_guard lock(mRecorder->mutex);
        return std::exchange(mRecorder->records, {});
    }

private:
    struct Recorder : Core::Log::LogDelegate {
        void log(int level, const QString &context, const QString &message) override
        {
            const std::lock_guard lock(mutex);
            records.push_back({level, context.toStdString(), message.toStdString()});
        }
        std::mutex mutex;
        std::vector<Record> records;
    };

    std::shared_ptr<Recorder> mRecorder;
    Core::Log::ScopedPushLogDelegate mRegistration;
};

} // namespace Vyn::Test
