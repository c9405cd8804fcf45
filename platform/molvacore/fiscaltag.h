#pragma once

#include <QString>

/// Tags of the fiscal data format (order ЕД-7-20/662@ of the Federal Tax Service with its changes)
/// that receipts here use.
namespace FiscalTag {

constexpr int TransferOperatorAddress = 1005;
constexpr int ClientContact = 1008;
constexpr int SettlementPlace = 1009;
constexpr int DateTime = 1012;
constexpr int TransferOperatorInn = 1016;
constexpr int UserInn = 1018;
constexpr int Total = 1020;
constexpr int Cashier = 1021;
constexpr int Quantity = 1023;
constexpr int TransferOperatorName = 1026;
constexpr int ItemName = 1030;
constexpr int CashSum = 1031;
constexpr int RegisterNumber = 1037;
constexpr int ShiftNumber = 1038;
constexpr int DocumentNumber = 1040;
constexpr int FiscalStorageNumber = 1041;
constexpr int ReceiptNumber = 1042;
constexpr int ItemCost = 1043;
constexpr int BankAgentOperation = 1044;
constexpr int UserName = 1048;
constexpr int SettlementSign = 1054;
constexpr int TaxSystem = 1055;
constexpr int Item = 1059;
constexpr int PayAgentPhone = 1073;
constexpr int PayOperatorPhone = 1074;
constexpr int TransferOperatorPhone = 1075;
constexpr int FiscalSign = 1077;
constexpr int Price = 1079;
constexpr int CashlessSum = 1081;
constexpr int UserAttribute = 1084;
constexpr int UserAttributeName = 1085;
constexpr int UserAttributeValue = 1086;
constexpr int SupplierPhone = 1171;
constexpr int SettlementPlaceName = 1187;
constexpr int QrText = 1196;
constexpr int VatRate = 1199;
constexpr int FormatVersion = 1209;
constexpr int ItemType = 1212;
constexpr int CalculationMethod = 1214;
constexpr int ItemAgentSign = 1222;
constexpr int AgentData = 1223;
constexpr int SupplierData = 1224;
constexpr int SupplierName = 1225;
constexpr int SupplierInn = 1226;
constexpr int Buyer = 1227;
constexpr int BuyerInn = 1228;

/// The key of a tag in a document's map: its number in decimal.
inline QString key(int tag)
{
    return QString::number(tag);
}

} // namespace FiscalTag
