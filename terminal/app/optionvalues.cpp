#include <app/optionvalues.h>

#include <algorithm>

namespace {

const QString dashes = QStringLiteral("--");

QString nameIn(const QString &argument)
{
    return argument.startsWith(dashes) ? argument.mid(dashes.size()).section(QLatin1Char('='), 0, 0)
                                       : QString();
}

} // namespace

QString missingOptionValue(const QList<QCommandLineOption> &options, const QStringList &arguments)
{
    const auto optionOf = [&options](const QString &argument) {
        const QString name = nameIn(argument);
        return std::find_if(
            options.cbegin(), options.cend(),
            [&name](const QCommandLineOption &option) { return option.names().contains(name); });
    };
    for (int i = 1; i < arguments.size() && arguments.at(i) != dashes; ++i) {
        const auto option = optionOf(arguments.at(i));
        if (option == options.cend() || option->valueName().isEmpty())
            continue;
        const bool inPlace = arguments.at(i).contains(QLatin1Char('='));
        const QString value =
            inPlace ? arguments.at(i).section(QLatin1Char('='), 1) : arguments.value(++i);
        if (value.isEmpty() || (!inPlace && optionOf(value) != options.cend())) {
            return QStringLiteral("Ключу --%1 нужно значение «%2». %3")
                .arg(option->names().constFirst(), option->valueName(), option->description());
        }
    }
    return QString();
}
