// SPDX-License-Identifier: Apache-2.0
// zovra_shots OUT-FOLDER SUFFIX light|dark NAME,NAME...|all FILE...
// Pictures of windows: OUT-FOLDER/NAME+SUFFIX.png
#include "Stage.h"

#include <QApplication>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 5) {
        std::fputs("zovra_shots OUT-FOLDER SUFFIX light|dark NAME,NAME...|all [FILE...]\n", stderr);
        return 2;
    }
    const QTemporaryDir settings;
    zov::shots::CStage stage(settings.filePath(QStringLiteral("layout.ini")), arguments.mid(5),
                             arguments[3] == QStringLiteral("dark"));
    const QStringList wanted = arguments[4].split(QLatin1Char(','));
    int taken = 0;
    for (const zov::shots::SShot& shot : zov::shots::Shots()) {
        if (arguments[4] != QStringLiteral("all") && !wanted.contains(QLatin1String(shot.name))) {
            continue;
        }
        const std::unique_ptr<QWidget> window = shot.make(stage);
        if (window) {
            window->show();
        }
        stage.Settle();
        stage.Save(window ? *window : static_cast<QWidget&>(stage.Frame()),
                   QStringLiteral("%1/%2%3.png")
                       .arg(arguments[1], QLatin1String(shot.name), arguments[2]));
        ++taken;
    }
    std::printf("%d pictures\n", taken);
    return taken > 0 ? 0 : 1;
}
