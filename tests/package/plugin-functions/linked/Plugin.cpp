#include <QtCore/QString>

int definedNowhere();

#if defined(WHOLE)
int definedNowhere()
{
    return 42;
}
#endif

extern "C" Q_DECL_EXPORT int textLength()
{
    return QString::number(definedNowhere()).size();
}
