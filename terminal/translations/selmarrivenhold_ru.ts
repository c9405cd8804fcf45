<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>SelmarRivenholdHandler</name>
    <message>
        <source>Selmar Rivenhold plugin starting error</source>
        <translation>Модуль «Селмар Ривенхолд» не запустился</translation>
    </message>
    <message>
        <source>BoxInfo loading error</source>
        <translation>Данные кассы не загрузились. Проверьте настройку кассы в базе рабочего места.</translation>
    </message>
    <message>
        <source>Commission profile loading error</source>
        <translation>Профиль комиссий не загрузился. Назначьте кассе профиль комиссий.</translation>
    </message>
    <message>
        <source>Plugin for providers</source>
        <translation>Модуль для поставщиков</translation>
    </message>
</context>
<context>
    <name>SrIPaymentPage</name>
    <message>
        <source>Payment by card</source>
        <translation>Оплата картой</translation>
    </message>
    <message>
        <source>Introduction</source>
        <translation>Сумма, которую списать с карты:</translation>
    </message>
    <message>
        <source>Pos terminal initialization error</source>
        <translation>Терминал карт не готов. Проверьте его питание и связь.</translation>
    </message>
</context>
<context>
    <name>SrIStartPage</name>
    <message>
        <source>Connection timeout</source>
        <translation>Биллинг не ответил. Проверьте связь и повторите запрос.</translation>
    </message>
</context>
<context>
    <name>SrLStartPage</name>
    <message>
        <source>Connection timeout</source>
        <translation>Биллинг не ответил. Проверьте связь и повторите запрос.</translation>
    </message>
</context>
<context>
    <name>SelmarIndividualWizard</name>
    <message>
        <source>Wizard</source>
        <translation>Мастер платежа</translation>
    </message>
</context>
<context>
    <name>SelmarLegalWizard</name>
    <message>
        <source>Wizard</source>
        <translation>Мастер платежа</translation>
    </message>
</context>
</TS>
