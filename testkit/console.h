#pragma once

#include "app/mainwindow.h"
#include "testkit/drive.h"
#include "testkit/modaldriver.h"

/// The real window, operated from outside.
class Console
{
public:
    /// Returns the texts of the source code that a shown text may be a translation of.
    using SourceTexts = std::function<QStringList(const QString &shown)>;

    /// From now on captions, labels and lines are returned in the language of the source code.
    void setSourceTexts(const SourceTexts &function) { sourceTexts = function; }

    template <class Widget> Widget *find(const QByteArray &name) const
    {
        return drive::find<Widget>(&window, name);
    }
    void click(const QByteArray &button) const { drive::click(&window, button); }
    /// Clicks a button that opens modal dialogs.
    void click(const QByteArray &button, const std::vector<Answer> &answers) const;
    /// Opens the one dialog that has no button.
    void openUserConfig(const std::vector<Answer> &answers);
    void type(const QByteArray &field, const QString &text) const;
    void pointAt(const QByteArray &picture, QPoint position) const;

    bool isUsable(const QByteArray &control) const { return find<QWidget>(control)->isEnabled(); }
    QString caption(const QByteArray &button) const;
    QString labelText(const QByteArray &label) const;
    /// Returns the camera's picture as the window shows it.
    QImage picture(const QByteArray &label) const;

    QStringList lines(const QByteArray &log, int from = 0) const;
    QStringList infoLines() const { return lines("infoText"); }
    QStringList watchLines() const { return lines("watchText"); }
    /// Returns the lines that the information log has received since the step began.
    QStringList newInfoLines() const { return lines("infoText", linesBefore); }

    /// The step's pictures are saved under this path and ".png", those of its dialogs under the
    /// path, "-", a number and ".png"; an empty path saves none.
    void beginStep(const QString &picturePath);
    bool savePicture();
    /// Returns both logs as they are shown.
    QString logs() const;

    MainWindow window;

private:
    QStringList sourcesOf(const QString &shown) const;

    SourceTexts sourceTexts;
    QString picturePath;
    int linesBefore = 0;
};
