#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

/// What a run of the program leaves with whoever started it.
struct Outcome {
    int code = -1;
    QString out;
    QString error;
};

/// The program in a directory of its own, as a shell without any display would start it.
class NurvexTest : public testing::Test {
protected:
    QString in_folder(const QString& name) const { return folder.filePath(name); }

    void write(const QString& name, const QByteArray& content) const {
        QFile file(in_folder(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray read(const QString& name) const {
        QFile file(in_folder(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    /// `arrange` runs in the process that becomes the program.
    Outcome run(const QStringList& words, const QByteArray& input = {},
                const std::function<void()>& arrange = {}) const {
        QProcess process;
        process.setChildProcessModifier(arrange);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(name);
        }
        environment.insert(variables);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(NURVEX_PROGRAM, words);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(120'000));
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    /// Runs it and expects that it has nothing to say.
    void draw(const QStringList& words, const QByteArray& input = {}) const {
        const Outcome outcome = run(QStringList{"draw"} + words, input);
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.error.toStdString(), "");
        EXPECT_EQ(outcome.out, "");
    }

    QTemporaryDir folder;
    QProcessEnvironment variables; ///< that the program finds
};

struct Refusal {
    const char* name;
    QStringList words;
    int code;
    const char* told; ///< a part of what standard error says
};

inline void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.name;
}
