// SPDX-License-Identifier: Apache-2.0
// The desktop's entry, called by the program once it knows that windows are wanted.
#include "app/QtSettingsStore.h"
#include "app/manager/MainFrame.h"
#include "app/program/ReplayRun.h"
#include "base/Environment.h"

#include <QApplication>
#include <QSettings>
#include <QTimer>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

/// Without a display the toolkit ends the process by a crash; the user gets a word instead.
void TellNoDisplay(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtFatalMsg) {
        return; // the fatal one that follows says it again
    }
    std::fprintf(stderr,
                 "zovra: there is no display for the desktop. Start it in a graphical session, or "
                 "generate libraries without one by 'zovra -b ...' or 'zov import'.\n  %s\n",
                 text.simplified().toLocal8Bit().constData());
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE);
}

struct SArguments
{
    QStringList files;
    QStringList unknown;
    bool exitWhenIdle = false;
};

/// What the toolkit left of the command line.
SArguments Sort(const QStringList& arguments)
{
    SArguments sorted;
    for (const QString& argument : arguments.mid(1)) {
        if (argument == QStringLiteral("--exit-when-idle")) {
            sorted.exitWhenIdle = true;
        } else if (argument.startsWith(QLatin1Char('-'))) {
            sorted.unknown += argument;
        } else {
            sorted.files += argument;
        }
    }
    return sorted;
}

void QuitWhenIdle(zov::app::CZovMainFrm& frame)
{
    auto* poll = new QTimer(&frame);
    QObject::connect(poll, &QTimer::timeout, &frame, [&frame] {
        if (frame.IsIdle()) {
            frame.close();
        }
    });
    poll->start(0);
}

} // namespace

extern "C" Q_DECL_EXPORT int ZovraDesktop(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QCoreApplication::setOrganizationName(QStringLiteral("Zovra"));
    QCoreApplication::setApplicationName(QStringLiteral("Zovra"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZOV_VERSION));

    const QtMessageHandler plain = qInstallMessageHandler(TellNoDisplay);
    QApplication app(argc, argv);
    qInstallMessageHandler(plain);
    // The toolkit takes the locale from the environment; files keep to the point.
    std::setlocale(LC_NUMERIC, "C");

    QStringList given = QCoreApplication::arguments();
    const zov::app::SReplayRun replay = zov::app::TakeReplayRun(given);
    if (!replay.trouble.isEmpty()) {
        std::fprintf(stderr, "zovra: %s\n", replay.trouble.toLocal8Bit().constData());
        return EXIT_FAILURE;
    }
    const SArguments arguments = Sort(given);
    QSettings settings;
    zov::app::CQtSettingsStore store(settings);
    zov::app::CZovMainFrm frame(settings, store, zov::ProcessEnvironment());
    for (const QString& unknown : arguments.unknown) {
        frame.Session().Log().Write(
            QStringLiteral("Unsupport parameter:%1,please check.").arg(unknown).toStdString());
    }
    frame.OpenAtStart(arguments.files);
    frame.show();
    if (arguments.exitWhenIdle) {
        QuitWhenIdle(frame);
    }
    if (!replay.file.isEmpty() && !zov::app::StartReplay(replay, frame)) {
        return EXIT_FAILURE;
    }
    return QApplication::exec();
}
