#include "billhtml.h"

#include <text/showntext.h>

#include <QLocale>
#include <QStringList>

namespace {

const QLatin1String
    ruled(" border='1' style='border-style:solid; border-color:#aab4bb; border-collapse:collapse' "
          "cellspacing='0' cellpadding='3' width='100%'");

/// A name of a megabyte would take hundreds of pages, and characters that the document gives a
/// meaning of its own would move the code.
QString escaped(const QString &text)
{
    return shownCell(text).toHtmlEscaped();
}

QString payeeField(const char *name)
{
    for (const PaymentCode::Field &field : Bill::payee()) {
        if (field.name == QLatin1String(name))
            return escaped(field.value);
    }
    return QString();
}

QString head()
{
    return QStringLiteral(
               "<table width='100%' cellspacing='0' cellpadding='0'><tr>"
               "<td style='font-size:20px; font-weight:bold; color:#1b4f72'>%1</td>"
               "<td align='right' style='font-size:10px'>Водоснабжение и водоотведение<br>"
               "Справки: +7 800 100 18 72</td></tr></table>"
               "<hr style='color:#1b4f72'>")
        .arg(payeeField("Name"));
}

QString row(const QString &name, const QString &value)
{
    return value.isEmpty()
        ? QString()
        : QStringLiteral("<tr><td style='color:#555' width='34%'>%1</td><td>%2</td></tr>")
              .arg(name, escaped(value));
}

QString particulars(const Bill &bill)
{
    QString rows;
    rows += row(bill.isLegal() ? QStringLiteral("Договор") : QStringLiteral("Лицевой счёт"),
                bill.number());
    rows += row(QStringLiteral("Документ"), bill.documentNumber());
    rows += row(bill.isLegal() ? QStringLiteral("Организация") : QStringLiteral("Плательщик"),
                bill.payer());
    rows += row(QStringLiteral("ИНН"), bill.inn());
    rows += row(QStringLiteral("Адрес"), bill.address());
    rows += row(QStringLiteral("Период"), bill.periodText());
    const QString payee =
        QStringLiteral("ИНН %1, КПП %2<br>Р/с %3<br>%4<br>БИК %5, к/с %6")
            .arg(payeeField("PayeeINN"), payeeField("KPP"), payeeField("PersonalAcc"),
                 payeeField("BankName"), payeeField("BIC"), payeeField("CorrespAcc"));
    return QStringLiteral("<table width='100%' cellspacing='0' cellpadding='2'>%1</table>"
                          "<p style='font-size:10px; color:#333; margin-top:6px'>%2</p>")
        .arg(rows, payee);
}

QString lines(const Bill &bill)
{
    QString html =
        QStringLiteral(
            "<table%1><thead><tr style='background-color:#e8eef2'><th align='left' "
            "width='49%'>Услуга</th>"
            "<th align='right'>Начислено, ₽</th><th align='right'>Долг, ₽</th>"
            "<th align='right'>К оплате, ₽</th></tr></thead>")
            .arg(ruled);
    for (const Bill::Line &line : bill.lines())
        html += QStringLiteral("<tr><td>%1</td><td align='right'>%2</td><td "
                               "align='right'>%3</td><td align='right'>%4</td></tr>")
                    .arg(escaped(line.name), BillHtml::money(line.charge),
                         BillHtml::money(line.debt), BillHtml::money(line.topay));
    html += QStringLiteral("<tr style='background-color:#f4f6f8'><td colspan='3'><b>Итого</b></td>"
                           "<td align='right'><b>%1</b></td></tr></table>")
                .arg(BillHtml::money(bill.total()));
    return html;
}

QString meters(const Bill &bill)
{
    if (bill.meters().isEmpty())
        return QString();
    QString html =
        QStringLiteral(
            "<p style='margin-top:12px; margin-bottom:4px'><b>Счётчики</b></p><table%1><tr "
            "style='background-color:#e8eef2'>"
            "<th align='left'>Счётчик</th><th align='right'>Последнее показание, м³</th>"
            "<th align='right'>Показание сейчас, м³</th></tr>")
            .arg(ruled);
    for (const Bill::Meter &meter : bill.meters())
        html += QStringLiteral("<tr><td>%1</td><td align='right'>%2</td><td></td></tr>")
                    .arg(escaped(meter.name), QString::number(meter.lastValue));
    return html + QStringLiteral("</table>");
}

} // namespace

QString BillHtml::money(qint64 kopecks)
{
    const quint64 magnitude =
        kopecks < 0 ? 0 - static_cast<quint64>(kopecks) : static_cast<quint64>(kopecks);
    const QString roubles =
        QLocale(QLocale::Russian, QLocale::RussianFederation).toString(magnitude / 100);
    return QStringLiteral("%1%2,%3").arg(
        kopecks < 0 ? QStringLiteral("−") : QString(), roubles,
        QString::number(magnitude % 100).rightJustified(2, QLatin1Char('0')));
}

QString BillHtml::codePlace()
{
    return QStringLiteral("\u2060code\u2060");
}

QString BillHtml::html(const Bill &bill)
{
    const QString due = bill.total() > 0
        ? QStringLiteral("К оплате: %1 ₽").arg(money(bill.total()))
        : QStringLiteral("Платить нечего. Остаток: %1 ₽")
              .arg(money(bill.total()));
    return head()
        + QStringLiteral(
              "<p style='font-size:16px; font-weight:bold; margin-bottom:6px'>%1</p>"
              "<table width='100%' cellspacing='0' cellpadding='0'><tr><td valign='top'>%2"
              "<p style='font-size:18px; font-weight:bold; margin-top:10px'>%3</p></td>"
              "<td align='center' valign='top' width='230' style='font-size:10px'>%4<br>"
              "Наведите сканер на код</td></tr></table>"
              "<p style='margin-top:12px; margin-bottom:4px'><b>Расшифровка</b></p>")
              .arg(escaped(bill.title()), particulars(bill), due, codePlace())
        + lines(bill) + meters(bill)
        + QStringLiteral("<p style='font-size:9px; color:#555; margin-top:14px'>Долг со знаком "
                         "минус — переплата. Образец для проверки приёма платежей. "
                         "Реквизиты вымышлены, платить по нему нельзя.</p>");
}
