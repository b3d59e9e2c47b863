#include "Vornic/qt/QtProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <utility>

namespace vornic {

void startProgram(const std::vector<std::string>& command,
                  std::function<void(int status, const std::string& complaint)> ended) {
    auto* const process = new QProcess(QCoreApplication::instance());
    const auto finish = [process, ended = std::move(ended)](int status) {
        const QString complaint = QString::fromLocal8Bit(process->readAllStandardError());
        process->deleteLater();
        ended(status, complaint.trimmed().toStdString());
    };
    QObject::connect(process, &QProcess::finished, process,
                     [finish](int status, QProcess::ExitStatus how) {
                         finish(how == QProcess::NormalExit ? status : -1);
                     });
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [finish](QProcess::ProcessError error) {
                         // Whatever else goes wrong is followed by the end.
                         if (error == QProcess::FailedToStart) {
                             finish(-1);
                         }
                     });
    // Whoever waits for the answer may be gone by the end of this program: a question that is still
    // open then is closed, and nobody is told.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, process,
                     [process] {
                         process->disconnect();
                         process->kill();
                     });
    QStringList arguments;
    for (std::size_t word = 1; word < command.size(); ++word) {
        arguments.append(QString::fromStdString(command[word]));
    }
    process->start(QString::fromStdString(command.front()), arguments);
}

} // namespace vornic
