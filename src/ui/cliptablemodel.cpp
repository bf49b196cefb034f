#include "cliptablemodel.h"

#include "l10n/localizationmanager.h"
#include "session/packviewmodel.h"
#include "statusbadge.h"

#include <QLocale>
#include <QMimeData>

ClipTableModel::ClipTableModel(PackViewModel &viewModel, LocalizationManager &localization,
                               QObject *parent)
    : QAbstractTableModel(parent)
    , m_viewModel(viewModel)
    , m_localization(localization)
    , m_snapshot(viewModel.clips())
{
    relabel();
    connect(&m_viewModel, &PackViewModel::clipsChanged, this, &ClipTableModel::sync);
    connect(&m_localization, &LocalizationManager::languageChanged, this, [this] {
        relabel();
        if (!m_snapshot.isEmpty())
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    });
}

void ClipTableModel::relabel()
{
    const L10n strings = m_localization.strings();
    for (ClipHealth h : kAllHealths)
        m_labels[static_cast<int>(h)] = StatusBadgeLook::label(h, strings);
    m_dragHelp = strings[u"table.drag.help"];
    m_audioYes = strings[u"audio.yes.help"];
    m_audioNo = strings[u"audio.no.help"];
    m_duplicate = strings[u"issue.duplicate"];
}

void ClipTableModel::sync()
{
    const QList<MediaClip> &now = m_viewModel.clips();
    const qsizetype before = m_snapshot.size();
    const auto sameIdsUpTo = [&](qsizetype count) {
        for (qsizetype i = 0; i < count; ++i) {
            if (m_snapshot[i].id != now[i].id)
                return false;
        }
        return true;
    };
    if (now.size() >= before && sameIdsUpTo(before)) {
        // Same rows (maybe more at the end): repaint only the rows whose clip changed.
        qsizetype first = -1;
        qsizetype last = -1;
        for (qsizetype i = 0; i < before; ++i) {
            if (!(m_snapshot[i] == now[i])) {
                if (first < 0)
                    first = i;
                last = i;
            }
        }
        if (now.size() > before) {
            beginInsertRows({}, static_cast<int>(before), static_cast<int>(now.size() - 1));
            m_snapshot = now;
            endInsertRows();
        } else {
            m_snapshot = now;
        }
        if (first >= 0)
            Q_EMIT dataChanged(index(static_cast<int>(first), 0),
                               index(static_cast<int>(last), ColumnCount - 1));
        return;
    }
    beginResetModel();
    m_snapshot = now;
    endResetModel();
}

int ClipTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_snapshot.size());
}

int ClipTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

const MediaClip *ClipTableModel::clipAt(int row) const
{
    if (row < 0 || row >= m_snapshot.size())
        return nullptr;
    return &m_snapshot[row];
}

int ClipTableModel::rowOf(const QUuid &id) const
{
    for (qsizetype i = 0; i < m_snapshot.size(); ++i) {
        if (m_snapshot[i].id == id)
            return static_cast<int>(i);
    }
    return -1;
}

QString ClipTableModel::frameRateLabel(const std::optional<double> &fps)
{
    if (!fps || *fps <= 0)
        return kDashLabel;
    return QString::number(*fps, 'f', 2);
}

QString ClipTableModel::sizeLabel(qint64 bytes)
{
    return formatFileSize(bytes, QLocale());
}

QVariant ClipTableModel::data(const QModelIndex &index, int role) const
{
    const MediaClip *clip = clipAt(index.row());
    if (!clip)
        return {};
    switch (role) {
    case IdRole:
        return clip->id;
    case HealthRole:
        return QVariant::fromValue(clip->health());
    case HealthLabelRole:
        return m_labels[static_cast<int>(clip->health())];
    case HasAudioRole:
        return clip->hasAudio;
    case DuplicateRole:
        return clip->isDuplicate;
    case PathRole:
        return clip->sourcePath();
    case IsImageRole:
        return clip->isImage();
    case Qt::ToolTipRole:
        if (index.column() == HandleColumn)
            return m_dragHelp;
        if (index.column() == HealthColumn) {
            const QString audio = clip->hasAudio ? m_audioYes : m_audioNo;
            return clip->isDuplicate ? m_duplicate + u'\n' + audio : audio;
        }
        if (index.column() == OriginalColumn)
            return clip->sourcePath();
        return {};
    case Qt::DisplayRole:
    case Qt::EditRole:
        break;
    default:
        return {};
    }
    switch (index.column()) {
    case CueColumn:
        return clip->cueIndex;
    case HealthColumn:
        return m_labels[static_cast<int>(clip->health())];
    case NameColumn:
        return clip->arenaName;
    case OriginalColumn:
        return clip->originalName;
    case ResolutionColumn:
        return clip->resolutionLabel();
    case DurationColumn:
        return clip->durationLabel();
    case FrameRateColumn:
        return frameRateLabel(clip->frameRate);
    case CodecColumn:
        return clip->videoCodec.value_or(kDashLabel);
    case SizeColumn:
        return sizeLabel(clip->fileSize);
    default:
        return {};
    }
}

bool ClipTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const MediaClip *clip = clipAt(index.row());
    if (!clip || index.column() != NameColumn || role != Qt::EditRole)
        return false;
    // The session sanitizes and publishes; the row repaints from its answer.
    m_viewModel.setArenaName(clip->id, value.toString());
    return true;
}

Qt::ItemFlags ClipTableModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    if (index.column() == NameColumn)
        f |= Qt::ItemIsEditable;
    return f;
}

Qt::DropActions ClipTableModel::supportedDropActions() const
{
    return Qt::MoveAction | Qt::CopyAction;
}

QStringList ClipTableModel::mimeTypes() const
{
    return {kRowMimeType, QStringLiteral("text/uri-list")};
}

QMimeData *ClipTableModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setData(kRowMimeType, QByteArray::number(indexes.front().row()));
    return data;
}

bool ClipTableModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int,
                                     const QModelIndex &) const
{
    return data && (data->hasFormat(kRowMimeType) || data->hasUrls());
}

bool ClipTableModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                  const QModelIndex &parent)
{
    Q_UNUSED(column);
    if (!data || action == Qt::IgnoreAction)
        return false;
    if (data->hasFormat(kRowMimeType)) {
        bool ok = false;
        const int from = data->data(kRowMimeType).toInt(&ok);
        if (!ok || from < 0 || from >= rowCount())
            return false;
        // `row` is the gap the drop points at (before that row); on a row itself it is -1
        // and the drop goes to that row's place.
        int to = rowCount() - 1; // below the last row
        if (row >= 0)
            to = row > from ? row - 1 : row;
        else if (parent.isValid())
            to = parent.row();
        to = std::clamp(to, 0, rowCount() - 1);
        if (to == from)
            return false;
        m_viewModel.moveClip(from, to);
        // Nothing for the view to remove: the session reordered the rows itself.
        return false;
    }
    if (data->hasUrls())
        return m_viewModel.handleDrop(data->urls());
    return false;
}
