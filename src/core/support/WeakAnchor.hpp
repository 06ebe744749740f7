#pragma once

#include <memory>

namespace quillet {

// Lets callbacks that may outlive an object reach it weakly, whoever owns the object: the object
// keeps the anchor, callbacks keep a `Ref`, and a Ref of a destroyed object yields null.
// Main-thread objects only: nothing else can destroy the object between `get` and its use.
template <class T> class WeakAnchor {
public:
    class Ref {
    public:
        Ref() = default;
        T* get() const {
            auto owner = owner_.lock();
            return owner ? *owner : nullptr;
        }

    private:
        friend class WeakAnchor;
        explicit Ref(std::weak_ptr<T*> owner) : owner_(std::move(owner)) {}
        std::weak_ptr<T*> owner_;
    };

    explicit WeakAnchor(T* owner) : owner_(std::make_shared<T*>(owner)) {}
    WeakAnchor(const WeakAnchor&) = delete;
    WeakAnchor& operator=(const WeakAnchor&) = delete;

    Ref ref() const { return Ref(owner_); }

private:
    std::shared_ptr<T*> owner_;
};

} // namespace quillet
