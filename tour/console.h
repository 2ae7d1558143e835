#pragma once

#include "app/mainwindow.h"
#include "tour/sourcetexts.h"

#include <QDir>

#include <functional>
#include <vector>

/// What an operator does with a dialog.
using Answer = std::function<void(QWidget *dialog)>;

/// The real window, handled as an operator does: controls are found by their object names, a
/// button's being its slot's. A control that does not exist ends the program.
class Console
{
public:
    Console();

    /// Captions, labels and lines are told in the language of the code, whatever the window's is
    /// (as "zh_CN"). False if it has no texts.
    bool setLanguage(const QString &language) { return sourceTexts.load(language); }

    void click(const char *button);
    /// For a button that opens dialogs: each takes its turn as soon as it is there, has its picture
    /// taken, and must be closed by its answer.
    void click(const char *button, const std::vector<Answer> &answers);
    /// The one dialog that no button opens.
    void openUserConfig(const std::vector<Answer> &answers);
    void type(const char *field, const QString &text);
    void pointAt(const char *picture, QPoint position);

    bool isUsable(const char *control) const;
    QString caption(const char *button) const;
    QString labelText(const char *label) const;
    /// The camera's picture as the window shows it.
    QImage picture(const char *name) const;

    /// All lines of the information log, of the message log.
    QStringList infoLines() const;
    /// The lines of the information log that have come since the step began.
    QStringList newInfoLines() const;
    QStringList watchLines() const;

    /// Pictures of what follows are saved under this path and ".png", those of dialogs with a
    /// number before that; none without a path.
    void beginStep(const QString &picturePath);
    bool savePicture();
    /// Both logs as they are shown.
    QString logs() const;

private:
    template <class Widget> Widget *find(const char *name) const;
    QStringList lines(const char *log, int from = 0) const;

    MainWindow window;
    SourceTexts sourceTexts;
    QString picturePath;
    int linesBefore = 0;
};
