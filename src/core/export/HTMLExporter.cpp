#include "HTMLExporter.h"

#include "../model/Clock.h"
#include "../model/HelpFunctions.h"
#include "../model/ProjectCollection.h"
#include "../platform/AtomicFile.h"
#include "../platform/LocaleFormat.h"
#include "../stores/CustomerStorage.h"
#include "EntryTexts.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

QString readTemplate(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void copyFile(const QString &source, const QString &target) {
    QFile file(source);
    if (file.open(QIODevice::ReadOnly))
        AtomicFile::write(target, file.readAll());
}

void copyFolder(const QString &source, const QString &target) {
    if (!QFileInfo(source).isDir())
        return;
    QDir().mkpath(target);
    QDirIterator it(source, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    const QDir sourceDir(source);
    while (it.hasNext()) {
        const QFileInfo info = it.nextFileInfo();
        const QString copy = target + u'/' + sourceDir.relativeFilePath(info.filePath());
        if (info.isDir())
            QDir().mkpath(copy);
        else
            copyFile(info.filePath(), copy);
    }
}

} // namespace

HTMLExporter::HTMLExporter(const QString &stylePath, const CustomerStorage *customers)
    : m_customers(customers)
    , m_styleBundle(stylePath)
    , m_fileTemplate(readTemplate(stylePath + u"/report.html"))
    , m_projectBlock(readTemplate(stylePath + u"/project.template"))
    , m_entryBlock(readTemplate(stylePath + u"/entry.template"))
    , m_flatFeeEntryBlock(readTemplate(stylePath + u"/flatfeeentry.template")) {}

QString HTMLExporter::convertNewLines(const QString &text) {
    QString converted = text;
    converted.replace(u'\n', u"<br/>"_s);
    return converted;
}

void HTMLExporter::copyStyleFiles(const QString &targetDir) const {
    for (const auto &name : {u"screen.css"_s, u"print.css"_s}) {
        const QString target = targetDir + u'/' + name;
        if (!QFileInfo::exists(target))
            copyFile(m_styleBundle + u'/' + name, target);
    }
    const QString images = targetDir + u"/images";
    if (!QFileInfo::exists(images))
        copyFolder(m_styleBundle + u"/images", images);
}

QString HTMLExporter::customerImageText(const Customer &customer, const QString &targetDir) {
    const QImage image = customer.customerImage();
    if (image.isNull())
        return {};
    // JPEG has no transparency: transparent parts become white rather than black.
    QImage bitmap(image.size(), QImage::Format_RGB32);
    bitmap.fill(Qt::white);
    QPainter(&bitmap).drawImage(0, 0, image);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    bitmap.save(&buffer, "JPG", 90);
    const QString fileName = u"images/customer%1.jpg"_s.arg(customer.customerID());
    QDir(targetDir).mkpath(u"images"_s);
    AtomicFile::write(targetDir + u'/' + fileName, jpeg);
    return u"<img src=\""_s + fileName + u"\"/>";
}

QString HTMLExporter::stateText(const ProjectItem &item) {
    return item.isChecked() ? u"<img src=\"images/checked.png\"/>"_s : QString();
}

QString HTMLExporter::liveDuration(const Entry &entry) const {
    const QDateTime start =
        HelpFunctions::makeDateFromDateString(entry.fromDate(), entry.fromTime());
    const QDateTime now = Clock::now();
    const int minutes = int(start.secsTo(now) / 60) - entry.pauseTimeWithPeriodFrom(start, now);
    return ProjectCollection::makeStringFromMinutes(minutes);
}

QString HTMLExporter::getHTMLBlockForTimerEntry(const Entry &entry, EntryTexts &texts) const {
    QString startDate, startTime, endDate, endTime;
    QString duration = entry.formattedEffectiveTime();
    if (!entry.hasPeriod()) {
        startDate = texts.day(entry);
    } else {
        startDate = texts.mediumFromDate(entry);
        startTime = texts.fromTime(entry);
        if (entry.isWorking()) {
            endDate = u"<i>---</i>"_s;
            duration = u"<font color=\"red\">"_s + liveDuration(entry) + u"</font>";
        } else {
            endDate = texts.mediumToDate(entry);
            endTime = texts.toTime(entry);
        }
    }
    QString block = m_entryBlock;
    block.replace(u"%entrydescription%"_s, convertNewLines(entry.htmlComment()));
    block.replace(u"%startdate%"_s, startDate);
    block.replace(u"%starttime%"_s, startTime);
    block.replace(u"%enddate%"_s, endDate);
    block.replace(u"%endtime%"_s, endTime);
    block.replace(u"%duration%"_s, duration);
    block.replace(u"%pauseduration%"_s, entry.formattedPauseDuration());
    block.replace(u"%state%"_s, stateText(entry));
    return block;
}

QString HTMLExporter::getHTMLBlockForFlatFeeEntry(const FlatFeeEntry &fee,
                                                  EntryTexts &texts) const {
    QString block = m_flatFeeEntryBlock;
    block.replace(u"%entrydescription%"_s, convertNewLines(fee.htmlComment()));
    block.replace(u"%day%"_s, texts.day(fee));
    block.replace(u"%amount%"_s, projectCollection()->formattedWages(fee.amount()));
    block.replace(u"%state%"_s, stateText(fee));
    return block;
}

QString HTMLExporter::getHTMLBlockForProject(const Project &project, bool applyFilter,
                                             const QString &targetDir, EntryTexts &texts) const {
    QString customerName, customerImage;
    if (const auto customer =
            m_customers ? m_customers->customerWithID(project.customer()) : Customer::Pointer()) {
        customerName = customer->name();
        customerImage = customerImageText(*customer, targetDir);
    }
    const ProjectCollection *collection = projectCollection();
    QString block = m_projectBlock;
    block.replace(u"%projectname%"_s, project.name());
    block.replace(u"%projectdescription%"_s, project.htmlDescription());
    block.replace(u"%hourlywage%"_s, project.formattedHourlyWage());
    block.replace(u"%totalwages%"_s,
                  project.formattedTotalWagesWithFilter(true, [collection](const auto &item) {
                      return collection->isEntryFiltered(item);
                  }));
    block.replace(u"%customername%"_s, customerName);
    block.replace(u"%customerimage%"_s, customerImage);
    block.replace(u"%totalpauseduration%"_s, project.formattedTotalPauseTime());

    QString entries, flatFees;
    int total = 0;
    for (const auto &item : project.entries()) {
        if (isLeftOut(*item, applyFilter))
            continue;
        if (item->isFlatFee()) {
            flatFees +=
                getHTMLBlockForFlatFeeEntry(static_cast<const FlatFeeEntry &>(*item), texts) +
                u'\n';
        } else {
            total += item->effectiveDuration();
            entries += getHTMLBlockForTimerEntry(static_cast<const Entry &>(*item), texts) + u'\n';
        }
    }
    block.replace(u"%totalduration%"_s,
                  applyFilter ? hoursAndMinutes(total) : project.formattedTotalTime(true));
    block.replace(u"%entries%"_s, entries);
    block.replace(u"%flatfeeentries%"_s, flatFees);
    return block;
}

Exporter::Result HTMLExporter::exportProjects(const QStringList &projectNames, const QList<bool> &,
                                              const QList<bool> &, const QString &path,
                                              bool applyFilter, const QString &) {
    copyStyleFiles(path);
    QString projects;
    EntryTexts texts;
    const ProjectList selected = selectedProjects(projectNames, applyFilter);
    int done = 0;
    for (const auto &project : selected) {
        projects += getHTMLBlockForProject(*project, applyFilter, path, texts) + u'\n';
        reportProgress(++done, selected.size());
        if (isCancelled())
            return cancelled();
    }
    QString report = m_fileTemplate;
    report.replace(u"%projects%"_s, projects);
    report.replace(u"%datestring%"_s, LocaleFormat::formatDate(Clock::now().date(), 3));
    const AtomicFile::Result written = AtomicFile::write(path + u"/report.html", report.toUtf8());
    return {written.ok, written.error};
}
