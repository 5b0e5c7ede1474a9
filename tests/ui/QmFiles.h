// The translation files beside this test program: copies of the built ones, which tests change as they like.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>

namespace QmFiles {

inline QString path(const char *name) {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/translations/") + QLatin1String(name);
}

inline void restore() {
    QDir().mkpath(path(""));
    for (const char *name : {"ts_zh.qm", "ts_en.qm"}) {
        QFile::remove(path(name));
        ASSERT_TRUE(QFile::copy(QStringLiteral("Z:" QOR_QM_DIR "/") + QLatin1String(name), path(name)));
    }
}

} // namespace QmFiles
