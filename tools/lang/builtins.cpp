// The built-in functions the runner carries out: text, conversion, math, dates and
// times, and a few file functions. A date is a Double: seconds since 1 January 1970
// (UTC), shown and taken apart in local time.
#include "tools/lang/interpreter.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

namespace klvr {

namespace {

struct Arity {
    const char* name;
    std::uint8_t min, max;
};

// Indexed by Builtin.
constexpr Arity kArity[] = {
    {"Len", 1, 1}, {"Left", 2, 2}, {"Right", 2, 2}, {"Mid", 2, 3}, {"InStr", 2, 4}, {"UCase", 1, 1},
    {"LCase", 1, 1}, {"Trim", 1, 1}, {"Str", 1, 1}, {"Val", 1, 1}, {"Alert", 1, 2}, {"MsgBox", 1, 2},
    {"Print", 0, 1}, {"LTrim", 1, 1}, {"RTrim", 1, 1}, {"InStrRev", 2, 3}, {"Replace", 3, 3},
    {"Split", 2, 2}, {"Join", 2, 2}, {"StrReverse", 1, 1}, {"StrComp", 2, 3}, {"Space", 1, 1},
    {"Chr", 1, 1}, {"Asc", 1, 1}, {"Hex", 1, 1}, {"Oct", 1, 1}, {"Abs", 1, 1}, {"Sqr", 1, 1},
    {"Int", 1, 1}, {"Fix", 1, 1}, {"Round", 1, 2}, {"Sgn", 1, 1}, {"Rnd", 0, 0}, {"Randomize", 0, 1},
    {"Sin", 1, 1}, {"Cos", 1, 1}, {"Tan", 1, 1}, {"Atn", 1, 1}, {"Exp", 1, 1}, {"Log", 1, 1},
    {"Min", 2, 2}, {"Max", 2, 2}, {"CStr", 1, 1}, {"CInt", 1, 1}, {"CLng", 1, 1}, {"CDbl", 1, 1},
    {"CBool", 1, 1}, {"IsNumeric", 1, 1}, {"IsNil", 1, 1}, {"IsArray", 1, 1}, {"UBound", 1, 1},
    {"LBound", 1, 1}, {"Now", 0, 0}, {"Today", 0, 0}, {"Timer", 0, 0}, {"Year", 1, 1}, {"Month", 1, 1},
    {"Day", 1, 1}, {"Hour", 1, 1}, {"Minute", 1, 1}, {"Second", 1, 1}, {"Weekday", 1, 1},
    {"DateAdd", 3, 3}, {"DateDiff", 3, 3}, {"Sleep", 1, 1}, {"ReadString", 1, 1}, {"WriteString", 2, 2},
    {"FileExists", 1, 1}, {"FolderExists", 1, 1},
};
static_assert(sizeof(kArity) / sizeof(kArity[0]) == static_cast<std::size_t>(Builtin::FolderExists) + 1);

// Clamps a count or position from the program into the range of a QString.
qsizetype clampSize(std::int64_t n, qsizetype max) {
    if (n < 0)
        return 0;
    return n > static_cast<std::int64_t>(max) ? max : static_cast<qsizetype>(n);
}

[[noreturn]] void invalid(const char* name) { throw RuntimeFailure(std::string("Invalid argument for ") + name); }

double number(const Value& v) {
    if (v.type == VType::Integer || v.type == VType::Double || v.type == VType::Nil)
        return doubleOf(v);
    if (v.type == VType::String)
        return doubleOf(numberFromText(v.str()));
    throw RuntimeFailure("Type mismatch");
}

// A whole Double as an Integer when it fits.
Value whole(double d) {
    if (std::isfinite(d) && d >= -9.2233720368547758e18 && d < 9.2233720368547758e18)
        return Value::ofInteger(static_cast<std::int64_t>(d));
    throw RuntimeFailure("Overflow");
}

Value real(double d) {
    if (std::isnan(d))
        throw RuntimeFailure("Invalid argument");
    return Value::ofDouble(d);
}

QDateTime dateOf(const Value& v) {
    const double seconds = number(v);
    if (!std::isfinite(seconds) || std::fabs(seconds) > 1.0e13)
        throw RuntimeFailure("Invalid date");
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::llround(seconds * 1000.0)));
}

Value dateValue(const QDateTime& date) { return Value::ofDouble(static_cast<double>(date.toMSecsSinceEpoch()) / 1000.0); }

bool readsAsNumber(const QString& text) {
    bool ok = false;
    text.trimmed().toDouble(&ok);
    return ok;
}

}  // namespace

Value BuiltinExpr::eval(Interpreter& in) const {
    const Arity& arity = kArity[static_cast<std::size_t>(fn)];
    if (args.size() < arity.min || args.size() > arity.max)
        throw RuntimeFailure(std::string("Wrong number of arguments for ") + arity.name);
    Value v[4];
    for (std::size_t i = 0; i < args.size(); ++i)
        v[i] = args[i]->eval(in);
    switch (fn) {
    case Builtin::Len:
        if (const auto* array = v[0].isObject(HeapObj::Kind::Array) ? static_cast<const ArrayObj*>(v[0].o) : nullptr)
            return Value::ofInteger(static_cast<std::int64_t>(array->items.size()));
        return Value::ofInteger(textOf(v[0]).size());
    case Builtin::Left: {
        const QString s = textOf(v[0]);
        return Value::ofString(s.left(clampSize(integerOf(v[1]), s.size())));
    }
    case Builtin::Right: {
        const QString s = textOf(v[0]);
        return Value::ofString(s.right(clampSize(integerOf(v[1]), s.size())));
    }
    case Builtin::Mid: {
        const QString s = textOf(v[0]);
        const qsizetype start = clampSize(integerOf(v[1]), s.size());
        const qsizetype length = args.size() == 3 ? clampSize(integerOf(v[2]), s.size() - start) : s.size() - start;
        return Value::ofString(s.mid(start, length));
    }
    case Builtin::InStr: {
        const QString s = textOf(v[0]);
        const qsizetype start = args.size() >= 3 ? clampSize(integerOf(v[2]), s.size()) : 0;
        const bool matchCase = args.size() == 4 ? truthOf(v[3]) : true;
        return Value::ofInteger(s.indexOf(textOf(v[1]), start, matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive));
    }
    case Builtin::InStrRev: {
        const QString s = textOf(v[0]);
        const qsizetype from = args.size() == 3 ? clampSize(integerOf(v[2]), s.size()) : s.size();
        return Value::ofInteger(s.lastIndexOf(textOf(v[1]), from));
    }
    case Builtin::UCase: return Value::ofString(textOf(v[0]).toUpper());
    case Builtin::LCase: return Value::ofString(textOf(v[0]).toLower());
    case Builtin::Trim: return Value::ofString(textOf(v[0]).trimmed());
    case Builtin::LTrim: {
        const QString s = textOf(v[0]);
        qsizetype i = 0;
        while (i < s.size() && s[i].isSpace())
            ++i;
        return Value::ofString(s.mid(i));
    }
    case Builtin::RTrim: {
        QString s = textOf(v[0]);
        qsizetype n = s.size();
        while (n > 0 && s[n - 1].isSpace())
            --n;
        s.truncate(n);
        return Value::ofString(s);
    }
    case Builtin::Str:
    case Builtin::CStr: return Value::ofString(textOf(v[0]));
    case Builtin::Val: return numberFromText(textOf(v[0]));
    case Builtin::Replace: {
        QString s = textOf(v[0]);
        const QString find = textOf(v[1]);
        if (!find.isEmpty())
            s.replace(find, textOf(v[2]));
        return Value::ofString(s);
    }
    case Builtin::Split: {
        const QString s = textOf(v[0]), separator = textOf(v[1]);
        Value list = Value::ofObject(new ArrayObj);
        auto* array = static_cast<ArrayObj*>(list.o);
        if (separator.isEmpty()) {
            array->append(Value::ofString(s));
            return list;
        }
        for (const QString& part : s.split(separator))
            array->append(Value::ofString(part));
        return list;
    }
    case Builtin::Join: {
        if (!v[0].isObject(HeapObj::Kind::Array))
            throw RuntimeFailure("Type mismatch");
        const auto& items = static_cast<const ArrayObj*>(v[0].o)->items;
        const QString separator = textOf(v[1]);
        QString joined;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i)
                joined += separator;
            joined += textOf(items[i]);
        }
        return Value::ofString(joined);
    }
    case Builtin::StrReverse: {
        const QString s = textOf(v[0]);
        QString reversed(s.size(), QChar());
        for (qsizetype i = 0; i < s.size(); ++i)
            reversed[s.size() - 1 - i] = s[i];
        return Value::ofString(reversed);
    }
    case Builtin::StrComp: {
        const bool matchCase = args.size() == 3 ? truthOf(v[2]) : true;
        const int c = QString::compare(textOf(v[0]), textOf(v[1]), matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
        return Value::ofInteger(c < 0 ? -1 : (c > 0 ? 1 : 0));
    }
    case Builtin::Space: {
        const std::int64_t n = integerOf(v[0]);
        if (n > (std::int64_t{1} << 28))
            throw RuntimeFailure("Out of memory");
        return Value::ofString(QString(clampSize(n, std::numeric_limits<qsizetype>::max()), u' '));
    }
    case Builtin::Chr: {
        const std::int64_t code = integerOf(v[0]);
        if (code < 0 || code > 0xFFFF)
            invalid("Chr");
        return Value::ofString(QString(QChar(static_cast<char16_t>(code))));
    }
    case Builtin::Asc: {
        const QString s = textOf(v[0]);
        if (s.isEmpty())
            invalid("Asc");
        return Value::ofInteger(s[0].unicode());
    }
    case Builtin::Hex: return Value::ofString(QString::number(static_cast<qulonglong>(integerOf(v[0])), 16).toUpper());
    case Builtin::Oct: return Value::ofString(QString::number(static_cast<qulonglong>(integerOf(v[0])), 8));
    case Builtin::Abs:
        if (v[0].type == VType::Integer) {
            if (v[0].i == std::numeric_limits<std::int64_t>::min())
                throw RuntimeFailure("Overflow");
            return Value::ofInteger(v[0].i < 0 ? -v[0].i : v[0].i);
        }
        return Value::ofDouble(std::fabs(number(v[0])));
    case Builtin::Sqr: {
        const double x = number(v[0]);
        if (x < 0)
            invalid("Sqr");
        return Value::ofDouble(std::sqrt(x));
    }
    case Builtin::Int: return v[0].type == VType::Integer ? v[0] : whole(std::floor(number(v[0])));
    case Builtin::Fix: return v[0].type == VType::Integer ? v[0] : whole(std::trunc(number(v[0])));
    case Builtin::Round: {
        const double x = number(v[0]);
        if (args.size() == 1)
            return v[0].type == VType::Integer ? v[0] : whole(std::round(x));
        const std::int64_t digits = integerOf(v[1]);
        if (digits < 0 || digits > 15)
            invalid("Round");
        const double scale = std::pow(10.0, static_cast<double>(digits));
        return Value::ofDouble(std::round(x * scale) / scale);
    }
    case Builtin::Sgn: {
        const double x = number(v[0]);
        return Value::ofInteger(x < 0 ? -1 : (x > 0 ? 1 : 0));
    }
    case Builtin::Rnd: {
        // xorshift64*: fast, and the same sequence after the same Randomize(n).
        std::uint64_t& s = in.randomState;
        s ^= s >> 12;
        s ^= s << 25;
        s ^= s >> 27;
        return Value::ofDouble(static_cast<double>((s * 2685821657736338717ull) >> 11) / 9007199254740992.0);
    }
    case Builtin::Randomize: {
        const std::uint64_t start = args.empty() ? static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch())
                                                : static_cast<std::uint64_t>(integerOf(v[0]));
        in.randomState = start * 0x9E3779B97F4A7C15ull + 1;
        return Value();
    }
    case Builtin::Sin: return real(std::sin(number(v[0])));
    case Builtin::Cos: return real(std::cos(number(v[0])));
    case Builtin::Tan: return real(std::tan(number(v[0])));
    case Builtin::Atn: return real(std::atan(number(v[0])));
    case Builtin::Exp: return real(std::exp(number(v[0])));
    case Builtin::Log: {
        const double x = number(v[0]);
        if (x <= 0)
            invalid("Log");
        return Value::ofDouble(std::log(x));
    }
    case Builtin::Min: return truthOf(binary(BinOp::Le, v[0], v[1])) ? v[0] : v[1];
    case Builtin::Max: return truthOf(binary(BinOp::Ge, v[0], v[1])) ? v[0] : v[1];
    case Builtin::CInt:
    case Builtin::CLng: return convertTo(DeclType::Integer, v[0]);
    case Builtin::CDbl: return convertTo(DeclType::Double, v[0]);
    case Builtin::CBool: return convertTo(DeclType::Boolean, v[0]);
    case Builtin::IsNumeric:
        return Value::ofBoolean(v[0].type == VType::Integer || v[0].type == VType::Double ||
                                (v[0].type == VType::String && readsAsNumber(v[0].str())));
    case Builtin::IsNil: return Value::ofBoolean(v[0].type == VType::Nil);
    case Builtin::IsArray: return Value::ofBoolean(v[0].isObject(HeapObj::Kind::Array));
    case Builtin::UBound:
    case Builtin::LBound:
        if (!v[0].isObject(HeapObj::Kind::Array))
            throw RuntimeFailure("Type mismatch");
        return Value::ofInteger(fn == Builtin::LBound ? 0 : static_cast<std::int64_t>(static_cast<const ArrayObj*>(v[0].o)->items.size()) - 1);
    case Builtin::Now: return dateValue(QDateTime::currentDateTime());
    case Builtin::Today: return dateValue(QDateTime(QDate::currentDate(), QTime(0, 0)));
    case Builtin::Timer: return Value::ofDouble(QTime(0, 0).msecsTo(QTime::currentTime()) / 1000.0);
    case Builtin::Year: return Value::ofInteger(dateOf(v[0]).date().year());
    case Builtin::Month: return Value::ofInteger(dateOf(v[0]).date().month());
    case Builtin::Day: return Value::ofInteger(dateOf(v[0]).date().day());
    case Builtin::Hour: return Value::ofInteger(dateOf(v[0]).time().hour());
    case Builtin::Minute: return Value::ofInteger(dateOf(v[0]).time().minute());
    case Builtin::Second: return Value::ofInteger(dateOf(v[0]).time().second());
    case Builtin::Weekday: return Value::ofInteger(dateOf(v[0]).date().dayOfWeek() % 7 + 1);
    case Builtin::DateAdd: {
        const QString interval = textOf(v[0]).toLower();
        const std::int64_t n = integerOf(v[1]);
        if (n > 100000000 || n < -100000000)
            invalid("DateAdd");
        const QDateTime date = dateOf(v[2]);
        const int count = static_cast<int>(n);
        if (interval == "yyyy") return dateValue(date.addYears(count));
        if (interval == "m") return dateValue(date.addMonths(count));
        if (interval == "d") return dateValue(date.addDays(count));
        if (interval == "h") return dateValue(date.addSecs(3600 * static_cast<qint64>(count)));
        if (interval == "n") return dateValue(date.addSecs(60 * static_cast<qint64>(count)));
        if (interval == "s") return dateValue(date.addSecs(count));
        invalid("DateAdd");
    }
    case Builtin::DateDiff: {
        const QString interval = textOf(v[0]).toLower();
        const QDateTime a = dateOf(v[1]), b = dateOf(v[2]);
        const qint64 seconds = a.secsTo(b);
        if (interval == "yyyy") return Value::ofInteger(b.date().year() - a.date().year());
        if (interval == "m") return Value::ofInteger((b.date().year() - a.date().year()) * 12 + b.date().month() - a.date().month());
        if (interval == "d") return Value::ofInteger(a.date().daysTo(b.date()));
        if (interval == "h") return Value::ofInteger(seconds / 3600);
        if (interval == "n") return Value::ofInteger(seconds / 60);
        if (interval == "s") return Value::ofInteger(seconds);
        invalid("DateDiff");
    }
    case Builtin::Sleep: {
        const std::int64_t ms = integerOf(v[0]);
        if (ms > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(std::min<std::int64_t>(ms, 24 * 3600 * 1000)));
        return Value();
    }
    case Builtin::ReadString: {
        QFile file(textOf(v[0]));
        if (!file.open(QIODevice::ReadOnly))
            throw RuntimeFailure("File cannot be read: " + textOf(v[0]).left(200).toStdString());
        if (file.size() > (qint64{1} << 30))
            throw RuntimeFailure("Out of memory");
        return Value::ofString(QString::fromUtf8(file.readAll()));
    }
    case Builtin::WriteString: {
        // Written whole or not at all.
        QSaveFile file(textOf(v[0]));
        if (!file.open(QIODevice::WriteOnly) || file.write(textOf(v[1]).toUtf8()) < 0 || !file.commit())
            throw RuntimeFailure("File cannot be written: " + textOf(v[0]).left(200).toStdString());
        return Value();
    }
    case Builtin::FileExists: return Value::ofBoolean(QFileInfo(textOf(v[0])).isFile());
    case Builtin::FolderExists: return Value::ofBoolean(QFileInfo(textOf(v[0])).isDir());
    case Builtin::Alert:
    case Builtin::MsgBox:
    case Builtin::Print:
        // A message box shows its title and its text; here each is a line of output.
        if (args.empty())
            in.print(QString());
        for (std::size_t i = 0; i < args.size(); ++i)
            if (i == 0 || !textOf(v[i]).isEmpty())
                in.print(textOf(v[i]));
        return Value();
    }
    return Value();
}

}  // namespace klvr
