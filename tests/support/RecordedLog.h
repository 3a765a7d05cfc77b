// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>

#include <mutex>
#include <ostream>
#include <utility>

namespace Vyn::Test {

using namespace Qt::StringLiterals;

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

/// A delegate that calls a function with the message of each record.
struct Calling : Core::Log::LogDelegate, std::function<void(const QString &)> {
    using function::function;
    void log(int, const QString &, const QString &message) override { (*this)(message); }
};

/// Keeps every record that the log manager delivers while this object exists. The first object of
/// the process binds the loggers.
class RecordedLog : Core::Log::LogDelegate {
public:
    RecordedLog() { [[maybe_unused]] static const bool bound = (OvraBase::bindLoggers(), true); }

    std::vector<Record> records() const
    {
        const std::lock_guard lock(mMutex);
        return mRecords;
    }

    /// Returns the records and forgets them.
    std::vector<Record> take()
    {
        const std::lock_guard lock(mMutex);
        return std::exchange(mRecords, {});
    }

private:
    void log(int level, const QString &context, const QString &message) override
    {
        const std::lock_guard lock(mMutex);
        mRecords.push_back({level, context.toStdString(), message.toStdString()});
    }

    mutable std::mutex mMutex;
    std::vector<Record> mRecords;
    // The pointer owns nothing: the registration ends before this object does.
    const Core::Log::ScopedPushLogDelegate mRegistration{{std::shared_ptr<void>(), this}};
};

} // namespace Vyn::Test
