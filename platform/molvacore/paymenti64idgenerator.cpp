#include <molvacore/paymenti64idgenerator.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QRandomGenerator>
#include <QtEndian>

#include <array>
#include <atomic>

namespace {

using Secret = std::array<quint64, 4>;

const Secret &processSecret()
{
    static const Secret secret = [] {
        Secret bits;
        QRandomGenerator::system()->generate(bits.begin(), bits.end());
        return bits;
    }();
    return secret;
}

void add(QCryptographicHash &hash, quint64 value)
{
    std::array<char, sizeof(value)> bytes;
    qToLittleEndian(value, bytes.data());
    hash.addData(bytes.data(), static_cast<int>(bytes.size()));
}

} // namespace

qint64 PaymentI64IdGenerator::generate(unsigned int box, const QByteArray &seed)
{
    static std::atomic<quint64> counter{0};
    qint64 id = 0;
    while (id == 0) {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (const quint64 bits : processSecret())
            add(hash, bits);
        // A forked child has the parent's secret and counter, but a number of its own.
        add(hash, static_cast<quint64>(QCoreApplication::applicationPid()));
        add(hash, ++counter);
        add(hash, static_cast<quint64>(QDateTime::currentMSecsSinceEpoch()));
        add(hash, box);
        hash.addData(seed);
        const quint64 bits = qFromLittleEndian<quint64>(hash.result().constData());
        id = static_cast<qint64>(bits >> 1);
    }
    return id;
}
