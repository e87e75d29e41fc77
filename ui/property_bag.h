// The saved properties of a control: a name -> value map read and written with defaults.
// No window of the game saves its controls today; BoxControl and FNDialog read and write
// their properties through it so that a window that is saved can keep them.
//
// Write stores a value only when it differs from its default (a value equal to the default
// removes any stored one), so Read with the same default gives the value back either way.
#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace tallyon {

class PropertyBag {
public:
    PropertyBag() = default;
    explicit PropertyBag(QVariantMap values) : values_(std::move(values)) {}

    // The stored value under `name`, or `defaultValue` when none is stored.
    QVariant Read(const QString& name, const QVariant& defaultValue) const;
    // Stores `value` under `name`, or forgets the name when `value` equals `defaultValue`.
    void Write(const QString& name, const QVariant& value, const QVariant& defaultValue);

    bool Contains(const QString& name) const { return values_.contains(name); }
    const QVariantMap& Values() const { return values_; }

private:
    QVariantMap values_;
};

} // namespace tallyon
