#include "isriwizardpage.h"

ISrIWizardPage::~ISrIWizardPage() = default;
