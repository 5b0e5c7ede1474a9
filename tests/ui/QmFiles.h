// The translation files beside this test program: copies of the built ones, which tests change as they like.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace QmFiles {

inline QString folder() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/translations/");
}

inline QByteArray built(const char *name) {
    QFile file(QStringLiteral("Z:" QOR_QM_DIR "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

inline void write(const char *name, const QByteArray &bytes) {
    QFile file(folder() + QString::fromLatin1(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

inline void restore() {
    QDir().mkpath(folder());
    for (const char *name : {"ts_zh.qm", "ts_en.qm"})
        write(name, built(name));
}

} // namespace QmFiles
