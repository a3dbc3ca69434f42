#include "bench/log/DocumentReading.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

std::vector<SessionEntry> readOverDocument(const QByteArray& json)
{
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    std::vector<SessionEntry> history;
    history.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue value : array) {
        const QJsonObject object = value.toObject();
        const QDateTime date =
            QDateTime::fromString(object[QLatin1String("date")].toString(), Qt::ISODate);
        history.push_back(
            {QUuid::fromString(object[QLatin1String("id")].toString()),
             Instant{static_cast<double>(date.toSecsSinceEpoch()) - referenceDateUnixSeconds},
             object[QLatin1String("phaseRaw")].toInteger(),
             object[QLatin1String("seconds")].toDouble(),
             object[QLatin1String("reps")].toInteger()});
    }
    return history;
}
