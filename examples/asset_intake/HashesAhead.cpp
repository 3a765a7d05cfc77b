// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "HashesAhead.h"

#include <ovrabase/files/FileUtils.h>

#include <utility>

using Vyn::OvraBase::FileUtils;

HashesAhead::HashesAhead(const std::vector<QString> &files)
    : mHashes(files.size())
    , mWorker([this, &files](const std::stop_token &stop) { work(stop, files); })
{
}

HashesAhead::~HashesAhead()
{
    mWorker.request_stop();
    mRoom.release();
}

void HashesAhead::work(const std::stop_token &stop, const std::vector<QString> &files)
{
    for (std::size_t i = 0; i < files.size(); ++i) {
        mRoom.acquire();
        if (stop.stop_requested()) {
            return;
        }
        try {
            mHashes[i].text = FileUtils::hashToNumber(FileUtils::fileDataToHash(files[i]));
        } catch (...) {
            mHashes[i].failure = std::current_exception();
        }
        mReady.release();
    }
}

QString HashesAhead::next()
{
    mReady.acquire();
    Hash hash = std::move(mHashes[mNext++]);
    if (mNext % kBatch == 0) {
        mRoom.release(kBatch); // waking the worker for each file would cost more than hashing it
    }
    if (hash.failure) {
        std::rethrow_exception(hash.failure);
    }
    return hash.text;
}
