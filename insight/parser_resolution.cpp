// The parser's scope and type questions: TypeResolver over the parser's own stores and
// the project Global holds open. Each read of a store takes the store's mutex.
#include "editor/kltextview.h"
#include "frame/global.h"
#include "insight/parser.h"

namespace {

// The resolver of the open project. Global is asked for, never made: the parser exists
// before it in the start-up, and without a project the lookups answer from the scans
// alone.
template <typename Answer>
auto withResolver(const parser& scans, Answer answer) {
    static const QString noPath;
    static const QStringList noFiles;
    static const Value noClasses = Value::dictionary();
    const Global* global = nullptr;
    {
        QMutexLocker guard(&klvr_frame::SharedSlot<Global>::lock());
        global = klvr_frame::SharedSlot<Global>::instance();
    }
    const TypeResolver resolver(scans, global ? ResolutionProject{global->ProjectPath, global->projectFiles,
                                                                  global->dClassCompletion}
                                              : ResolutionProject{noPath, noFiles, noClasses});
    return answer(resolver);
}

} // namespace

QString parser::GetCurrentScope(const QString& path, qint64 position) const {
    KLVR_TRACE("GetCurrentScope");
    return withResolver(*this, [&](const TypeResolver& r) { return r.GetCurrentScope(path, position); });
}

QString parser::FindLocalVariable(const QString& path, const QString& scope, const QString& name) const {
    KLVR_TRACE("FindLocalVariable");
    return withResolver(*this, [&](const TypeResolver& r) { return r.FindLocalVariable(path, scope, name); });
}

QString parser::FindClassVariable(const QString& path, const QString& name, const QString& visibility) const {
    KLVR_TRACE("FindClassVariable");
    return withResolver(*this, [&](const TypeResolver& r) { return r.FindClassVariable(path, name, visibility); });
}

QString parser::FindGlobalVariable(const QString& name) const {
    KLVR_TRACE("FindGlobalVariable");
    return withResolver(*this, [&](const TypeResolver& r) { return r.FindGlobalVariable(name); });
}

QString parser::FindType(QObject* view, const QString& expression, bool leaveOutLast) const {
    KLVR_TRACE("FindType");
    auto* textView = qobject_cast<KLTextView*>(view);
    if (!textView)
        return {};
    const QString path = KLVR_KLTEXTVIEW_FILENAME(textView);
    const qint64 position = KLVR_KLTEXTVIEW_POSITION(textView);
    return withResolver(*this,
                        [&](const TypeResolver& r) { return r.FindType(path, position, expression, leaveOutLast); });
}

QStringList parser::GetCustomClassIdentifiers(QObject* view, const QString& className) const {
    KLVR_TRACE("GetCustomClassIdentifiers");
    auto* textView = qobject_cast<KLTextView*>(view);
    if (!textView)
        return {};
    const QString path = KLVR_KLTEXTVIEW_FILENAME(textView);
    return withResolver(*this, [&](const TypeResolver& r) { return r.GetCustomClassIdentifiers(path, className); });
}
