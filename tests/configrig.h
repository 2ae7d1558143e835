#pragma once

#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "testkit/dialogrig.h"

#include <QComboBox>
#include <QDir>
#include <QtTest>

enum Dialog : int { Output, User, Vendor };
constexpr Dialog All[] = {Output, User, Vendor};
constexpr MakeWindow Makers[] = {makeDialog<OutputCfgDlg>, makeDialog<UserCfgDlg>,
                                 makeDialog<vendorCfgDlg>};

enum Word : int { Name, GetCode, SetCode, Loaded, Unparsed, Issued, Saved, NotSaved, NotOpened };
constexpr const char *Words[][9] = {
    {"output", "1A", "1B", "Cfg file loaded：%1", "json parsing failed.", "Cfg data issued.",
     "File save to %1", "Fail to save the file：%1", "Fail to open the file:%1"},
    {"user", "16", "15", "Cfg file loaded：%1", "json parsing failed", "Cfg data issued.",
     "File saved to %1", "Fail to save file：%1", "Fail to open file:%1"},
    {"vendor", "18", "19", "cfg file loaded：%1", "json parsing failed.", "Cfg data issued",
     "File saved to %1", "Fail to save file：%1", "Fail to open file:%1"},
};

const QByteArray Ok = hex("EAC5 000001 00");
const QByteArray Refusal = hex("EAC5 000001 41");

struct ConfigRig : DialogRig
{
    explicit ConfigRig(int which)
        : DialogRig(Makers[which]),
          words(Words[which]),
          path(QCoreApplication::applicationDirPath() + "/zt415_" + words[Name] + ".cfg")
    {
    }

    /// Clicks the button and returns the new log lines, joined with "|".
    QString press(const QString &caption)
    {
        log.clear();
        drive::clickCaption(dialog.get(), caption);
        return lines().join('|');
    }
    QString get(const char *button, const QByteArray &document, char status = 0)
    {
        const QByteArray answer = head(document.size() + 1) + status + document;
        peer.expect({hex("EAC5 000001") + hex(words[GetCode]), {answer}});
        return press(button);
    }
    /// Loads the document and returns the log lines behind the first, which is always the same.
    QString load(const QByteArray &document)
    {
        const QString lines = get("Load", document);
        if (lines.section('|', 0, 0) != QString(words[Loaded]).arg(document.size()))
            QTest::qFail(qPrintable(lines), __FILE__, __LINE__);
        return lines.section('|', 1);
    }
    QString send(const char *button, const QByteArray &document, const QByteArray &answer = Ok)
    {
        peer.expect({head(document.size() + 1) + hex(words[SetCode]) + document, {answer}});
        return press(button);
    }
    QString shown(const QString &key) const
    {
        const auto *control = dialog->findChild<QWidget *>(key);
        const bool isCombo = qobject_cast<const QComboBox *>(control);
        return control->property(isCombo ? "currentText" : "text").toString();
    }

    const char *const *words;
    const QString path; ///< path of the exported file
};

/// Returns the dialog of the current row, whose tag begins with the dialog's name.
inline int dialogOfRow()
{
    return QByteArray("ouv").indexOf(QTest::currentDataTag()[0]);
}

/// Removes the files that the dialogs have written beside the program.
inline void removeExports()
{
    QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &name : folder.entryList({"zt415_*.cfg"}, QDir::AllEntries | QDir::System)) {
        folder.remove(name);
        folder.rmdir(name);
    }
}
