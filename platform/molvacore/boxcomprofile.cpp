#include <molvacore/boxcomprofile.h>

BoxComProfile::BoxComProfile(qint64 id, const QString &name) : m_id(id), m_name(name) {}
