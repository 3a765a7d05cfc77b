// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <exception>
#include <semaphore>
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

    void work(const std::stop_token &stop, const std::vector<QString> &files);

    std::vector<Hash> mHashes;
    std::size_t mNext = 0;
    static constexpr int kBatch = 32;
    std::counting_semaphore<> mRoom{2 * kBatch}; // no further: files may change before their turn
    std::counting_semaphore<> mReady{0};
    std::jthread mWorker; // ends before what it uses
};
