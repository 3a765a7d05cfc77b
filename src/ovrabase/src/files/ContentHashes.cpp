// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/MurmurHash3_p.h"
#include "files/ReadingAndWriting_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QtEndian>

namespace Vyn::OvraBase {
namespace {

constexpr qsizetype kHashSize = 16;
constexpr qsizetype kPieceSize = qsizetype{64} * 1024;

} // namespace

QByteArray FileUtils::dataToHash(const QByteArray &data)
{
    QByteArray hash(kHashSize, Qt::Uninitialized);
    murmurHash3(data.constData(), static_cast<std::size_t>(data.size()), 0, hash.data());
    return hash;
}

QByteArray FileUtils::fileDataToHash(const QString &path)
{
    QFile file;
    verifyAccessToFile(path, file, QIODevice::ReadOnly | QIODevice::Unbuffered);
    Murmur3Stream stream(0);
    QByteArray piece(kPieceSize, Qt::Uninitialized);
    qsizetype filled = 0; // a read may return less than it was asked for
    for (qint64 size = 0; (size = file.read(piece.data() + filled, kPieceSize - filled)) > 0;) {
        filled += size;
        if (filled == kPieceSize) {
            stream.addBlocks(piece.constData(), kPieceSize);
            filled = 0;
        }
    }
    verifyReading(file);
    QByteArray hash(kHashSize, Qt::Uninitialized);
    stream.finish(piece.constData(), static_cast<std::size_t>(filled), hash.data());
    return hash;
}

QString FileUtils::hashToNumber(const QByteArray &hash)
{
    if (hash.size() != kHashSize) {
        return hashToNumber(dataToHash(hash));
    }
    const char *const bytes = hash.constData();
    return QString::number(qFromLittleEndian<quint64>(bytes)) + u'-' +
           QString::number(qFromLittleEndian<quint64>(bytes + 8));
}

QString FileUtils::fileNameToHash(const QString &name)
{
    return hashToNumber(dataToHash(name.toUtf8()));
}

} // namespace Vyn::OvraBase
