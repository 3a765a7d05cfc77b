// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

/// The hashes of the contents of files in their order, made on another thread while the caller is
/// still busy with an earlier file.
class HashesAhead {
public:
    /// \a files must outlive this object.
    explicit HashesAhead(const std::vector<QString> &files);
    ~HashesAhead();

    /// Waits for the hash of the next file and returns it. Throws what hashing the file threw.
    QString next();

private:
    struct Hash {
        QString text;
        std::exception_ptr failure;
    };

    void work(const std::vector<QString> &files);

    // Not semaphores: those of libstdc++ 12 can sleep through a release on Windows, for ever.
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<Hash> mHashes; ///< one for each file; made below mReady
    std::size_t mReady = 0;
    std::size_t mTaken = 0;
    bool mStopped = false;
    std::jthread mWorker; // ends before what it uses
};
