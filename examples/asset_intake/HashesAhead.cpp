// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "HashesAhead.h"

#include <ovrabase/files/FileUtils.h>

#include <utility>

using Vyn::OvraBase::FileUtils;

namespace {

// A batch of the intake, so that the next one is hashed while one is copied. No further ahead, as
// files may change before their turn. Not one by one, as waking the other thread for each file
// would cost more than hashing it.
constexpr std::size_t kAhead = 1024;
constexpr std::size_t kBatch = 32;
static_assert(kAhead % kBatch == 0, "the worker waits only when all that it made can be taken");

} // namespace

HashesAhead::HashesAhead(const std::vector<QString> &files)
    : mHashes(files.size())
    , mWorker([this, &files] { work(files); })
{
}

HashesAhead::~HashesAhead()
{
    const std::lock_guard lock(mMutex);
    mStopped = true;
    mChanged.notify_one();
}

void HashesAhead::work(const std::vector<QString> &files)
{
    for (std::size_t i = 0; i < files.size(); ++i) {
        {
            std::unique_lock lock(mMutex);
            mChanged.wait(lock, [&] { return mStopped || i - mTaken / kBatch * kBatch < kAhead; });
            if (mStopped) {
                return;
            }
        }
        try {
            mHashes[i].text = FileUtils::hashToNumber(FileUtils::fileDataToHash(files[i]));
        } catch (...) {
            mHashes[i].failure = std::current_exception();
        }
        if ((i + 1) % kBatch == 0 || i + 1 == files.size()) {
            const std::lock_guard lock(mMutex);
            mReady = i + 1;
            mChanged.notify_one();
        }
    }
}

QString HashesAhead::next()
{
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mTaken < mReady; });
    Hash hash = std::move(mHashes[mTaken++]);
    if (mTaken % kBatch == 0) {
        mChanged.notify_one();
    }
    lock.unlock();
    if (hash.failure) {
        std::rethrow_exception(hash.failure);
    }
    return hash.text;
}
