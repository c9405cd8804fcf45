#include "benchrows.h"

#include "support/openhostdatabase.h"

#include "individual/selmarindividualwizard.h"
#include "legal/selmarlegalwizard.h"
#include "legal/srlservicespage.h"
#include "ui_selmarindividualwizard.h"
#include "ui_selmarlegalwizard.h"
#include "ui_sripaymentpage.h"
#include "ui_sriservicespage.h"
#include "ui_sristartpage.h"
#include "ui_srlstartpage.h"

#include <molvacore/provider.h>

#include <QElapsedTimer>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPluginLoader>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Loads the file in a child: a module that was loaded once stays, and the second time would find
/// it in its place. Negative when it did not load.
double secondsToInstance(const char *file)
{
    int ends[2];
    if (pipe(ends) != 0)
        return -1;
    const pid_t child = fork();
    if (child == 0) {
        QElapsedTimer timer;
        timer.start();
        QPluginLoader loader(QString::fromLocal8Bit(file));
        const bool loaded = loader.instance() != nullptr;
        const qint64 nanoseconds = loaded ? timer.nsecsElapsed() : -1;
        const bool told = write(ends[1], &nanoseconds, sizeof nanoseconds) == sizeof nanoseconds;
        _exit(told ? 0 : 1);
    }
    qint64 nanoseconds = -1;
    close(ends[1]);
    const bool heard = child > 0 && read(ends[0], &nanoseconds, sizeof nanoseconds) > 0;
    close(ends[0]);
    if (child > 0)
        waitpid(child, nullptr, 0);
    return heard && nanoseconds > 0 ? static_cast<double>(nanoseconds) / 1e9 : -1;
}

void load(benchmark::State &state, const char *file)
{
    for (auto _ : state) {
        const double seconds = secondsToInstance(file);
        if (seconds < 0)
            state.SkipWithError("the module did not load");
        else
            state.SetIterationTime(seconds);
    }
}

template<class Wizard>
void buildWizard(benchmark::State &state, int)
{
    const basix::Currency roubles(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль"));
    keepHostDatabaseOpen();
    Provider provider;
    provider.setCheckName(QStringLiteral("Селмар Ривенхолд"));
    for (auto _ : state) {
        auto wizard = std::make_unique<Wizard>(QFont(), roubles, basix::FixNumber(100, 0), nullptr);
        wizard->setProvider(provider);
        wizard->createPages(provider);
        state.PauseTiming();
        wizard.reset();
        state.ResumeTiming();
    }
}

template<class Form>
QWizardPage *formPage(QWizard *wizard)
{
    auto *page = new QWizardPage(wizard);
    Form form;
    form.setupUi(page);
    return page;
}

/// What the documents page, which has no form file, puts on itself.
QWizardPage *documentsPage(QWizard *wizard)
{
    auto *page = new QWizardPage(wizard);
    page->setObjectName(QStringLiteral("SrLServicesPage"));
    page->resize(855, 532);
    page->setWindowTitle(SrLServicesPage::tr("WizardPage"));

    auto *services = new QGroupBox(SrLServicesPage::tr("Услуги"), page);
    services->setObjectName(QStringLiteral("gbServices"));
    auto *pageLayout = new QHBoxLayout(page);
    pageLayout->setObjectName(QStringLiteral("horizontalLayout_2"));
    pageLayout->setContentsMargins(3, 3, 3, 3);
    pageLayout->addWidget(services);

    auto *byDebt = new QPushButton(SrLServicesPage::tr("Распределить по сумме долга"), services);
    byDebt->setObjectName(QStringLiteral("pbByDebt"));
    auto *table = new QTableView(services);
    table->setObjectName(QStringLiteral("tvServices"));
    auto *layout = new QVBoxLayout(services);
    layout->setObjectName(QStringLiteral("verticalLayout"));
    auto *buttons = new QHBoxLayout;
    buttons->setObjectName(QStringLiteral("horizontalLayout"));
    buttons->addSpacerItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    buttons->addWidget(byDebt);
    layout->addLayout(buttons);
    layout->addWidget(table);
    return page;
}

template<class WizardForm, class StartForm, QWizardPage *(*secondPage)(QWizard *)>
void buildForms(benchmark::State &state, int)
{
    for (auto _ : state) {
        auto wizard = std::make_unique<QWizard>();
        WizardForm form;
        form.setupUi(wizard.get());
        wizard->setPage(0, formPage<StartForm>(wizard.get()));
        wizard->setPage(1, secondPage(wizard.get()));
        wizard->setPage(2, formPage<Ui_SrIPaymentPage>(wizard.get()));
        wizard->setStartId(0);
        state.PauseTiming();
        wizard.reset();
        state.ResumeTiming();
    }
}

BenchRow wizardRow(const QString &id, const QString &subject, BenchRow::Body measured,
                   BenchRow::Body bare)
{
    BenchRow row;
    row.id = id;
    row.subject = subject;
    row.floorText = QStringLiteral("те же формы без страниц");
    row.atMost = 1.5;
    row.sizes = {1};
    row.measured = std::move(measured);
    row.bare = std::move(bare);
    return row;
}

} // namespace

QVector<BenchRow> pluginRows()
{
    BenchRow loading;
    loading.id = QStringLiteral("plugin");
    loading.subject = QStringLiteral("Загрузка модуля до instance()");
    loading.floorText = QStringLiteral("пустой модуль Qt с теми же библиотеками");
    loading.atMost = 1.5;
    loading.unit = BenchRow::Unit::OwnTime;
    loading.sizes = {1};
    loading.measured = [](benchmark::State &state, int) { load(state, SELMAR_PLUGIN_FILE); };
    loading.bare = [](benchmark::State &state, int) { load(state, SELMAR_EMPTY_PLUGIN_FILE); };

    return {
        loading,
        wizardRow(
            QStringLiteral("wizard-individual"),
            QStringLiteral("Построение мастера физического лица с тремя страницами"),
            buildWizard<SelmarIndividualWizard>,
            buildForms<Ui::SelmarIndividualWizard, Ui_SrIStartPage, formPage<Ui_SrIServicesPage>>),
        wizardRow(QStringLiteral("wizard-legal"),
                  QStringLiteral("Построение мастера юридического лица с тремя страницами"),
                  buildWizard<SelmarLegalWizard>,
                  buildForms<Ui::SelmarLegalWizard, Ui_SrLStartPage, documentsPage>)};
}
