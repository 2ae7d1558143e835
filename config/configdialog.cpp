#include "config/configdialog.h"

#include "data/fetchtext.h"
#include "data/json.h"
#include "data/wholefile.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QStyle>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

/// Returns null if the document has no such block.
const Json::Value *findBlock(const Json::Value &root, const char *name)
{
    return name ? json::member(root, name) : &root;
}

} // namespace

ConfigDialog::ConfigDialog(const Document &dialogDocument, std::vector<ConfigBlock> dialogBlocks,
                           CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent),
      document(dialogDocument),
      blocks(std::move(dialogBlocks))
{
}

QGridLayout *ConfigDialog::createGrid(int grid, std::initializer_list<PairSizes> pairs, int spacing)
{
    auto *layout = new QGridLayout;
    layout->setVerticalSpacing(spacing);
    // A nested grid has no spacing of its own.
    layout->setHorizontalSpacing(style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    for (const ConfigBlock &block : blocks) {
        for (const ConfigKey &key : block.keys) {
            if (!key.control.widget || key.place.grid != grid)
                continue;
            Q_ASSERT(key.place.pair < static_cast<int>(pairs.size()));
            addControl(layout, key, pairs.begin()[key.place.pair]);
        }
    }
    // Extra space goes around the controls, not between them.
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(layout->columnCount(), 1);
    return layout;
}

void ConfigDialog::addControl(QGridLayout *layout, const ConfigKey &key, const PairSizes &sizes)
{
    QWidget *widget = controls::field(key.control.widget, key.name, sizes.control);
    if (auto *combo = qobject_cast<QComboBox *>(widget))
        controls::fitItems(combo);
    controls::addField(layout, key.place.row, 1 + 2 * key.place.pair, key.label, sizes.label,
                       widget);
}

const char *const ConfigDialog::ButtonSlots[] = {SLOT(getBtnClickAct()), SLOT(setBtnClickAct()),
                                                 SLOT(exportBtnClickAct()),
                                                 SLOT(importBtnClickAct())};

QBoxLayout *ConfigDialog::createButtonRow(int endStretch, QSize loadSize, QSize fileSize,
                                          const char *const (&clickSlots)[4])
{
    const QString captions[4] = {tr("Load"), tr("Set"), tr("Export"), tr("Import")};
    auto *row = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        row->addStretch(i == 0 ? endStretch : 1);
        row->addWidget(
            controls::button(captions[i], i < 2 ? loadSize : fileSize, this, clickSlots[i]));
    }
    row->addStretch(endStretch);
    return row;
}

QGroupBox *ConfigDialog::createLockedGroup(const QString &title)
{
    auto *group = new QGroupBox(title);
    group->setEnabled(false);
    lockedGroups.append(group);
    return group;
}

void ConfigDialog::getBtnClickAct()
{
    QByteArray text;
    if (!fetch(&text))
        return;
    log(document.loaded.arg(text.size()));
    Json::Value root;
    if (!parse(text, &root)) {
        log(document.notParsed);
        return;
    }
    showDocument(root);
    for (QGroupBox *group : lockedGroups)
        group->setEnabled(true);
}

bool ConfigDialog::fetch(QByteArray *text)
{
    return fetchText(client, document.get, CmdClient::DocumentCapacity, text);
}

void ConfigDialog::issue(const QByteArray &text, const QString &line)
{
    if (std::invoke(document.set, client, text.constData(), static_cast<uint32_t>(text.size())))
        log(line);
}

bool ConfigDialog::parse(const QByteArray &text, Json::Value *root) const
{
    if (!json::parseObject(text.constData(), static_cast<size_t>(text.size()), root))
        return false;
    return std::all_of(blocks.begin(), blocks.end(), [root](const ConfigBlock &block) {
        const Json::Value *object = findBlock(*root, block.name);
        return !object || json::hasMembers(*object);
    });
}

void ConfigDialog::showDocument(const Json::Value &root)
{
    for (const ConfigBlock &block : blocks) {
        if (const Json::Value *object = findBlock(root, block.name))
            showBlock(block, *object);
    }
}

void ConfigDialog::showBlock(const ConfigBlock &block, const Json::Value &object)
{
    for (const ConfigKey &key : block.keys) {
        if (!json::member(object, key.name) || key.control.show(object, key.name))
            continue;
        if (!key.wrong.isEmpty())
            log(key.wrong);
    }
}

void ConfigDialog::setBtnClickAct()
{
    Json::Value root;
    for (const ConfigBlock &block : blocks) {
        Json::Value &object = block.name ? root[block.name] : root;
        for (const ConfigKey &key : block.keys) {
            if (const std::optional<Json::Value> value = key.control.value())
                object[key.name] = *value;
        }
    }
    issue(json::written(root), document.issued);
}

void ConfigDialog::exportBtnClickAct()
{
    QByteArray text;
    client->resynchronize(); // so that no late reply becomes the file
    if (!fetch(&text))
        return;
    log(tr("File loaded：%1").arg(text.size()));
    const QString path = QCoreApplication::applicationDirPath() + document.fileName;
    log((writeWholeFile(path, text) ? document.saved : document.notSaved).arg(path));
}

void ConfigDialog::importBtnClickAct()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("select fw"), QCoreApplication::applicationDirPath(),
                                     tr("*.cfg"))
            .trimmed();
    if (path.isEmpty())
        return;
    // A longer file exceeds a packet anyway, so this much of it is enough.
    QByteArray text;
    if (!readFile(path, wire::SendCapacity, &text)) {
        log(document.notOpened.arg(path));
        return;
    }
    issue(text, tr("Cfg file issued."));
}
