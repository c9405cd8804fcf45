#pragma once

#include <basixcore/sqliteschema.h>

/// Tables of the billing database. Money is whole kopecks, payer is a SampleAccount::Payer as a
/// number.
namespace BillingSchema {

basix::SqliteSchema schema();

}
