// Expected texts that are too long for a test stand in files beside it.
#pragma once

#include <gtest/gtest.h>

#include <QFile>

namespace ox::test {

/// Compares line by line. With OX_RENEW in the environment the file becomes what is seen.
inline void ExpectFile(const QString& name, const QByteArray& seen) {
  QFile file(OX_DEMO_FOLDER "/../tests/desktop/" + name);
  if (qEnvironmentVariableIsSet("OX_RENEW") && file.open(QIODevice::WriteOnly)) file.write(seen);
  file.close();
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArrayList expected = file.readAll().split('\n'), lines = seen.split('\n');
  for (int line = 0; line < std::max(expected.size(), lines.size()); ++line)
    ASSERT_EQ(lines.value(line).toStdString(), expected.value(line).toStdString()) << "line " << line + 1;
}

}  // namespace ox::test
