// SPDX-License-Identifier: Apache-2.0
/// This test program once more, running one disabled test, which is killed in the middle. The child
/// says on standard output what it has done; the parent waits for words of it.
///
///     TEST(SomeChild, DISABLED_SavesUntilKilled) { for (;;) { Save(); Say("saved"); } }
///     CKilledChild child("SomeChild.*", folder);
///     ASSERT_TRUE(child.WaitFor("saved"));
///     child.Kill();
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cstdio>

namespace zov::test {

class CKilledChild
{
public:
    CKilledChild(const char* filter, const QString& folder)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(kFolderName), folder);
        m_process.setProcessEnvironment(environment);
        m_process.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--gtest_also_run_disabled_tests"),
                         QStringLiteral("--gtest_filter=") + QLatin1String(filter)});
    }
    ~CKilledChild() { Kill(); }
    CKilledChild(const CKilledChild&) = delete;
    CKilledChild& operator=(const CKilledChild&) = delete;

    bool WaitFor(const char* word)
    {
        return QTest::qWaitFor(
                   [&] {
                       Read();
                       return m_said.contains(word) || m_process.state() == QProcess::NotRunning;
                   },
                   60'000) &&
               m_said.contains(word);
    }
    /// At once, whatever it is at.
    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished();
        Read();
    }
    /// How often it said the word, all in all.
    [[nodiscard]] int Count(const char* word) const { return m_said.count(word); }

    /// In the child: the folder that it was given.
    static QString Folder() { return qEnvironmentVariable(kFolderName); }
    /// In the child.
    static void Say(const char* word)
    {
        std::printf("%s\n", word);
        std::fflush(stdout);
    }

private:
    static constexpr const char* kFolderName = "ZOV_KILLED_CHILD_FOLDER";

    void Read() { m_said += m_process.readAllStandardOutput(); }

    QProcess m_process;
    QByteArray m_said;
};

} // namespace zov::test
