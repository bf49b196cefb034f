#include "clireport.h"

#include "output/packreport.h"

#include <QLocale>

#include <algorithm>

namespace CliReport {

namespace {

QString colourOf(ClipHealth health)
{
    switch (health) {
    case ClipHealth::ok:
        return QStringLiteral("\x1b[32m");
    case ClipHealth::warn:
        return QStringLiteral("\x1b[33m");
    case ClipHealth::fail:
        return QStringLiteral("\x1b[31m");
    case ClipHealth::unknown:
        break;
    }
    return QStringLiteral("\x1b[90m");
}

QString healthLabel(ClipHealth health, const L10n &strings)
{
    return strings[QStringLiteral("health.%1.short").arg(rawValue(health))].toUpper();
}

// Padded to a width in characters and one space more; CJK text is wider on a terminal but stays
// readable.
void appendCell(QString &out, const QString &text, int width)
{
    out += text;
    out.resize(out.size() + std::max<qsizetype>(width + 1 - text.size(), 1), u' ');
}

QString cell(const QString &text, int width)
{
    QString out;
    appendCell(out, text, width);
    return out;
}

// Written straight into the report: building every row and cell apart and joining them copied
// each character several times, which was most of the report's time for a big folder.
void appendRow(QString &out, const MediaClip &clip, int nameWidth, const L10n &strings, bool colour)
{
    const ClipHealth health = clip.health();
    appendCell(out, QString::number(clip.cueIndex), 4);
    appendCell(out, clip.arenaName, nameWidth);
    if (colour)
        out += colourOf(health);
    appendCell(out, healthLabel(health, strings), 6);
    if (colour)
        out += QStringLiteral("\x1b[0m");
    appendCell(out, clip.resolutionLabel(), 11);
    appendCell(out, clip.durationLabel(), 7);
    appendCell(out, clip.frameRate ? QString::number(*clip.frameRate, 'f', 2) : kDashLabel, 6);
    appendCell(out, clip.videoCodec.value_or(kDashLabel), 6);
    bool first = true;
    const auto appendFinding = [&](const QString &text) {
        if (!first)
            out += QStringLiteral(" | ");
        out += text;
        first = false;
    };
    if (clip.hasAlpha) // a property the operator wants to see, listed before the findings
        appendFinding(strings[u"clip.transparent"]);
    for (const ClipIssue &issue : clip.issues)
        appendFinding(issue.localized(strings));
}

} // namespace

QString eventLine(const char *eventKey, const MediaClip &clip, const L10n &strings, bool colour)
{
    QString line = cell(strings[QString::fromLatin1(eventKey)], 8);
    appendRow(line, clip, 0, strings, colour);
    return line;
}

QString text(const QList<MediaClip> &clips, const PreShowChecklist &checklist, const L10n &strings,
             bool colour)
{
    const QString reset = colour ? QStringLiteral("\x1b[0m") : QString();
    const QString bold = colour ? QStringLiteral("\x1b[1m") : QString();
    int nameWidth = strings[u"cli.name"].size();
    for (const MediaClip &clip : clips)
        nameWidth = qMax(nameWidth, int(clip.arenaName.size()));
    nameWidth = qMin(nameWidth, 48);

    QString out = bold + cell(strings[u"cli.cue"], 4) + cell(strings[u"cli.name"], nameWidth) +
                  cell(strings[u"table.status"], 6) + cell(strings[u"table.res"], 11) +
                  cell(strings[u"cli.duration"], 7) + cell(strings[u"table.fps"], 6) +
                  cell(strings[u"cli.codec"], 6) + strings[u"cli.findings"] + reset + u'\n';
    // About the name and a finding or two a row: growing the text as it goes copied it over and
    // over for a big folder.
    out.reserve(out.size() + (nameWidth + 160) * clips.size());
    for (const MediaClip &clip : clips) {
        appendRow(out, clip, nameWidth, strings, colour);
        out += u'\n';
    }

    out += u'\n' + bold + strings[u"checklist.title"] + QStringLiteral("  ") +
           strings.format(u"checklist.progress",
                          {checklist.readyCount(), qint64(checklist.items.size())}) +
           reset + u'\n';
    for (const ChecklistItem &item : checklist.items) {
        const QString mark = item.ok ? QStringLiteral("✓") : QStringLiteral("✗");
        out += QStringLiteral("  ") +
               (colour ? (item.ok ? colourOf(ClipHealth::ok) : colourOf(ClipHealth::warn))
                       : QString()) +
               mark + reset + u' ' + strings[item.titleKey] + QStringLiteral(" — ") +
               strings[item.detailKey] +
               (item.count ? QStringLiteral(" (%1)").arg(*item.count) : QString()) + u'\n';
    }

    const PackReport report = PackReport::from(clips);
    out += u'\n' + bold + strings[u"health.title"] + reset + u'\n';
    out += QStringLiteral("  %1 %2 · %3 %4 · %5 %6 · %7 %8 · %9 %10\n")
               .arg(strings[u"health.total"])
               .arg(report.total)
               .arg(strings[u"health.ok"])
               .arg(report.okCount)
               .arg(strings[u"health.warn"])
               .arg(report.warnCount)
               .arg(strings[u"health.fail"])
               .arg(report.failCount)
               .arg(strings[u"health.size"], formatFileSize(report.totalBytes, QLocale::c()));
    return out;
}

JsonValue clipJson(const MediaClip &clip, const L10n &strings)
{
    JsonValue::Object object;
    object.emplace(QStringLiteral("cue"), clip.cueIndex);
    object.emplace(QStringLiteral("arenaName"), clip.arenaName);
    object.emplace(QStringLiteral("originalName"), clip.originalName);
    object.emplace(QStringLiteral("path"), clip.sourcePath());
    object.emplace(QStringLiteral("health"), rawValue(clip.health()));
    object.emplace(QStringLiteral("fileSize"), clip.fileSize);
    putOptional(object, QStringLiteral("width"), clip.width);
    putOptional(object, QStringLiteral("height"), clip.height);
    putOptional(object, QStringLiteral("duration"), clip.duration);
    putOptional(object, QStringLiteral("frameRate"), clip.frameRate);
    putOptional(object, QStringLiteral("videoCodec"), clip.videoCodec);
    putOptional(object, QStringLiteral("audioCodec"), clip.audioCodec);
    object.emplace(QStringLiteral("hasAudio"), clip.hasAudio);
    object.emplace(QStringLiteral("hasAlpha"), clip.hasAlpha);
    object.emplace(QStringLiteral("isDuplicate"), clip.isDuplicate);
    putOptional(object, QStringLiteral("contentFingerprint"), clip.contentFingerprint);
    JsonValue::Array issues;
    for (const ClipIssue &issue : clip.issues) {
        JsonValue::Object entry;
        entry.emplace(QStringLiteral("kind"), rawValue(issue.kind));
        entry.emplace(QStringLiteral("severity"), rawValue(issue.severity));
        putOptional(entry, QStringLiteral("intValue"), issue.intValue);
        putOptional(entry, QStringLiteral("doubleValue"), issue.doubleValue);
        putOptional(entry, QStringLiteral("textValue"), issue.textValue);
        entry.emplace(QStringLiteral("message"), issue.localized(strings));
        issues.append(std::move(entry));
    }
    object.emplace(QStringLiteral("issues"), std::move(issues));
    return object;
}

JsonValue json(const QList<MediaClip> &clips, const PreShowChecklist &checklist,
               const PackStatus &status, const L10n &strings)
{
    JsonValue::Array clipArray;
    for (const MediaClip &clip : clips)
        clipArray.append(clipJson(clip, strings));
    JsonValue::Array items;
    for (const ChecklistItem &item : checklist.items) {
        JsonValue::Object entry;
        entry.emplace(QStringLiteral("id"), item.id);
        entry.emplace(QStringLiteral("ok"), item.ok);
        entry.emplace(QStringLiteral("title"), strings[item.titleKey]);
        entry.emplace(QStringLiteral("detail"), strings[item.detailKey]);
        putOptional(entry, QStringLiteral("count"), item.count);
        items.append(std::move(entry));
    }
    const PackReport report = PackReport::from(clips);
    JsonValue::Object reportObject{{QStringLiteral("total"), report.total},
                                   {QStringLiteral("okCount"), report.okCount},
                                   {QStringLiteral("warnCount"), report.warnCount},
                                   {QStringLiteral("failCount"), report.failCount},
                                   {QStringLiteral("unknownCount"), report.unknownCount},
                                   {QStringLiteral("totalBytes"), report.totalBytes}};
    return JsonValue::Object{{QStringLiteral("clips"), std::move(clipArray)},
                             {QStringLiteral("checklist"), std::move(items)},
                             {QStringLiteral("report"), std::move(reportObject)},
                             {QStringLiteral("status"), status.text(strings)}};
}

} // namespace CliReport
