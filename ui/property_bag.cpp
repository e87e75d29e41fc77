// The saved-property map of the program's own controls.
#include "ui/property_bag.h"

namespace tallyon {

QVariant PropertyBag::Read(const QString& name, const QVariant& defaultValue) const
{
    return values_.value(name, defaultValue);
}

void PropertyBag::Write(const QString& name, const QVariant& value, const QVariant& defaultValue)
{
    if (defaultValue.isValid() && value == defaultValue)
        values_.remove(name);
    else
        values_.insert(name, value);
}

} // namespace tallyon
