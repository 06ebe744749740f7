#include "macos/prefs/UserDefaultsStore.h"

#import "macos/support/Strings.h"

#import <Foundation/Foundation.h>

namespace quillet::macos {

struct UserDefaultsStore::Defaults {
    NSUserDefaults* store;
};

UserDefaultsStore::UserDefaultsStore()
    : defaults_(std::make_unique<Defaults>(Defaults{[NSUserDefaults standardUserDefaults]})) {}

UserDefaultsStore::~UserDefaultsStore() = default;

StoredValue UserDefaultsStore::value(const std::string& key) const {
    NSString* name = nsString(key);
    if (!name) {
        return {};
    }
    id object = [defaults_->store objectForKey:name];
    if (!object) {
        return {};
    }
    CFTypeRef reference = (__bridge CFTypeRef)object;
    const CFTypeID type = CFGetTypeID(reference);
    if (type == CFBooleanGetTypeID()) {
        return {CFBooleanGetValue(static_cast<CFBooleanRef>(reference)) != 0};
    }
    if (type == CFNumberGetTypeID()) {
        // An integer when the number converts without loss, a real otherwise.
        std::int64_t integer = 0;
        if (CFNumberGetValue(static_cast<CFNumberRef>(reference), kCFNumberSInt64Type, &integer)) {
            return {integer};
        }
        double real = 0;
        CFNumberGetValue(static_cast<CFNumberRef>(reference), kCFNumberDoubleType, &real);
        return {real};
    }
    if (type == CFStringGetTypeID()) {
        auto text = utf8String(static_cast<CFStringRef>(reference));
        return text ? StoredValue{std::move(*text)} : StoredValue{};
    }
    NSData* data = [defaults_->store dataForKey:name];
    if (!data) {
        return {}; // dates, arrays, dictionaries: nothing Quillet stores
    }
    const auto* bytes = static_cast<const std::uint8_t*>([data bytes]); // NULL when empty
    return {bytes ? Bytes(bytes, bytes + [data length]) : Bytes{}};
}

void UserDefaultsStore::setBool(const std::string& key, bool value) {
    if (NSString* name = nsString(key)) {
        [defaults_->store setBool:(value ? YES : NO) forKey:name];
    }
}

void UserDefaultsStore::setInteger(const std::string& key, std::int64_t value) {
    if (NSString* name = nsString(key)) {
        [defaults_->store setInteger:static_cast<NSInteger>(value) forKey:name];
    }
}

void UserDefaultsStore::setReal(const std::string& key, double value) {
    if (NSString* name = nsString(key)) {
        [defaults_->store setDouble:value forKey:name];
    }
}

void UserDefaultsStore::setString(const std::string& key, const std::string& value) {
    NSString* name = nsString(key);
    NSString* text = nsString(value);
    // Text that is not UTF-8 has no NSString, and storing nil would remove the setting instead.
    if (name && text) {
        [defaults_->store setObject:text forKey:name];
    }
}

void UserDefaultsStore::setData(const std::string& key, const Bytes& value) {
    if (NSString* name = nsString(key)) {
        [defaults_->store setObject:[NSData dataWithBytes:value.data() length:value.size()]
                             forKey:name];
    }
}

} // namespace quillet::macos
