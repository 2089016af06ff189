#pragma once
// The class frame every class of the system follows:
//  - a shared instance, registered once by whichever comes first: awakeFromNib() of an
//    instance loaded with an interface, or the first shared<class>() call, which creates
//    one under the class lock;
//  - KLVR_<CLASS>_INIT(owner, name): a new instance whose action is bound to the owner's
//    operation of that name when the owner has one (binding by name);
//  - KLVR__<CLASS>(x): a checked cast raising "KLCastException" with "'<class>' expected".
//
// Use: derive from QObject (or a widget), add Q_OBJECT, and put KLVR_CLASS_FRAME(cls)
// in the class body; then KLVR_DEFINE_CLASS_HELPERS(cls, CLS) after the class.

#include "frame/klexception.h"

#include <QMetaObject>
#include <QMutex>
#include <QMutexLocker>
#include <QObject>
#include <QPointer>
#include <QString>

namespace klvr_frame {

// Per-class registry of the shared instance; guarded by the class lock.
template <class T> struct SharedSlot {
    static QMutex& lock() {
        static QMutex m;
        return m;
    }
    static T*& instance() {
        static T* p = nullptr;
        return p;
    }
};

template <class T> T* shared() {
    QMutexLocker guard(&SharedSlot<T>::lock());
    T*& slot = SharedSlot<T>::instance();
    if (!slot)
        slot = new T();
    return slot;
}

// Registers `self` as the shared instance when none is registered yet.
template <class T> void registerIfFirst(T* self) {
    QMutexLocker guard(&SharedSlot<T>::lock());
    T*& slot = SharedSlot<T>::instance();
    if (!slot)
        slot = self;
}

// Clears the slot when the shared instance goes away (tests create and destroy many).
template <class T> void forget(T* self) {
    QMutexLocker guard(&SharedSlot<T>::lock());
    T*& slot = SharedSlot<T>::instance();
    if (slot == self)
        slot = nullptr;
}

// True when `owner`'s meta-object has an invokable operation exactly named `name`.
bool hasOperation(const QObject* owner, const QString& name);

// The text description of an object, used as a failed cast's additional information.
QString describe(const QObject* object);

// Sends KLVR_AwakeFromNib to classes that define the AwakeFromNib event.
template <class T> void sendAwakeFromNib(T* self) {
    if constexpr (requires { self->KLVR_AwakeFromNib(); })
        self->KLVR_AwakeFromNib();
}

template <class T> T* checkedCast(QObject* x, const char* className) {
    if (!x)
        return nullptr;
    if (T* t = qobject_cast<T*>(x))
        return t;
    KLVR_EXCEPTION(QStringLiteral("KLCastException"),
                   QStringLiteral("'%1' expected").arg(QLatin1String(className)), describe(x));
}

// Binding by name for the system's own classes: the new object's action is the
// owner's operation `name` when it has one.
struct ActionBinding {
    QPointer<QObject> target;
    QString action;
};

} // namespace klvr_frame

// In the class body.
#define KLVR_CLASS_FRAME(cls)                                                                     \
public:                                                                                           \
    static cls* shared##cls() { return klvr_frame::shared<cls>(); }                               \
    void awakeFromNib() {                                                                         \
        klvr_frame::registerIfFirst<cls>(this);                                                   \
        klvr_frame::sendAwakeFromNib(this);                                                       \
    }                                                                                             \
    klvr_frame::ActionBinding klvrBinding;                                                        \
                                                                                                  \
private:

// After the class: the constructor helper and the checked cast.
#define KLVR_DEFINE_CLASS_HELPERS(cls, CLS)                                                       \
    inline cls* KLVR_##CLS##_INIT(QObject* owner, const QString& name) {                          \
        cls* object = new cls();                                                                  \
        if (owner && klvr_frame::hasOperation(owner, name))                                       \
            object->klvrBinding = {owner, name};                                                  \
        return object;                                                                            \
    }                                                                                             \
    inline cls* KLVR__##CLS(QObject* x) { return klvr_frame::checkedCast<cls>(x, #cls); }
