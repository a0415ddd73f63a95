// Logs in temporary files: names, exclusive creation, removal, and failures of the medium.
#include <gtest/gtest.h>
#include "QyExpect.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QyExceptions.h>
#include <QyStyles.h>
#include <QyUndoStack.h>
#include <QyVectors.h>
#include <csignal>
#include <cstring>
#include <sys/resource.h>

namespace {

// Points the system's temporary folder at `path` for the lifetime of the object.
struct TempDirOverride {
  QByteArray old = qgetenv("TMPDIR");
  explicit TempDirOverride(const QString& path) { qputenv("TMPDIR", path.toLocal8Bit()); }
  ~TempDirOverride() {
    if (old.isEmpty()) qunsetenv("TMPDIR");
    else qputenv("TMPDIR", old);
  }
};

// A stack with its logs in files of `folder` (by default a fresh temporary one), and a line that
// records on it.
struct FileLogs {
  QTemporaryDir dir;
  TempDirOverride tmp;
  TQyUndoStack stack;
  TQyLineSettings line{nullptr};
  explicit FileLogs(const QString& folder = {}, bool inMemory = false)
      : tmp(folder.isEmpty() ? dir.path() : folder) {
    stack.SetToMemoryStream(inMemory);
    line.SetUndoStack(&stack);
  }
};

} // namespace

TEST(UndoFiles, ThreeConsecutiveFreeNamesRemovedOnDestruction) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  // A file that is already there keeps its number and its content.
  const QString stem = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
  const QString taken = dir.path() + "/" + stem + ".QyUndoStack.0";
  {
    QFile f(taken);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("foreign");
  }
  QStringList names;
  {
    FileLogs f(dir.path());
    f.line.SetWidth(2);
    f.line.SetWidth(3);
    names = f.stack.LogFileNames();
    ASSERT_EQ(names.size(), 3);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(names[i], dir.path() + "/" + stem + ".QyUndoStack." + QString::number(i + 1));
      EXPECT_TRUE(QFileInfo::exists(names[i]));
    }
    EXPECT_GT(QFileInfo(names[0]).size(), 0);
    f.stack.Undo(1);
    EXPECT_EQ(f.line.GetWidth(), 1.0f);
    f.stack.Redo(1);
    EXPECT_EQ(f.line.GetWidth(), 3.0f);
  }
  for (const QString& n : names) EXPECT_FALSE(QFileInfo::exists(n));
  QFile f(taken);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_EQ(f.readAll(), "foreign");
}

// A damaged log: the byte of a recorded boolean is read as that byte compared with 0, so a value
// other than 0 or 1 gives a proper true and never reaches a bool as it is.
TEST(UndoFiles, ABooleanByteOtherThanZeroOrOneReplaysAsTrue) {
  for (const auto& [stored, expected] : {std::pair<char, bool>{5, true}, {char(0x80), true}, {0, false}}) {
    FileLogs f;
    ASSERT_TRUE(f.dir.isValid());
    f.line.SetVisible(false); // the record ends with the old value: tag, then 4 bytes of 1
    {
      QFile log(f.stack.LogFileNames()[0]);
      ASSERT_TRUE(log.open(QIODevice::ReadWrite));
      ASSERT_TRUE(log.seek(log.size() - 4));
      ASSERT_EQ(log.peek(1), QByteArray(1, 1));
      log.write(&stored, 1);
    }
    f.stack.Undo(0);
    const bool visible = f.line.GetVisible();
    unsigned char byte;
    std::memcpy(&byte, &visible, 1);
    EXPECT_EQ(byte, expected ? 1 : 0) << int(stored);
  }
}

TEST(UndoFiles, UnusableTempFolderFailsClearlyAndTheModelKeepsItsState) {
  QTemporaryDir scratch;
  ASSERT_TRUE(scratch.isValid());
  // A folder where nothing can be created, even by root, and one that does not exist (which once
  // sent the logs to the root of the file system).
  for (const QString& folder : {QString("/proc/self"), scratch.path() + "/missing/folder"}) {
    FileLogs f(folder);
    const QString message = QyMessageOf<EStreamError>([&] { f.line.SetWidth(5); });
    const QString shown = QFileInfo::exists(folder) ? QDir(folder).canonicalPath() : folder;
    EXPECT_TRUE(message.startsWith("Cannot create file \"" + shown + "/")) << message.toStdString();
    EXPECT_TRUE(message.contains(".QyUndoStack.0\". "));
    EXPECT_EQ(f.line.GetWidth(), 1.0f) << "the setter did not store the value";
    EXPECT_FALSE(f.stack.CanUndo());
  }
  EXPECT_TRUE(QDir("/").entryList({"*.QyUndoStack.*"}, QDir::Files).isEmpty());
}

TEST(UndoFiles, FullMediumFailsTheWriteAndKeepsEarlierEntries) {
  FileLogs f;
  ASSERT_TRUE(f.dir.isValid());
  f.line.SetWidth(2);

  TQyDoubleVector v;
  v.AddRange(std::vector<double>(100000, 1.5)); // 800 kB of data
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  rlimit small = old;
  small.rlim_cur = 64 * 1024; // files may not grow past 64 kB: a full disk for the log
  auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const QString message = QyMessageOf<EWriteError>([&] { f.stack.PushVectorState(&v, "Data"); });
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(message, "Stream write error");
  EXPECT_EQ(f.stack.UndoList().Count(), 1) << "the failed record left no entry";
  EXPECT_EQ(v.Count(), 100000);
  f.stack.Undo(0);
  EXPECT_EQ(f.line.GetWidth(), 1.0f) << "the earlier entry is intact";
  f.stack.PushVectorState(&v, "Data"); // room again
  EXPECT_EQ(f.stack.UndoList().Count(), 1);
}

TEST(UndoFiles, ManyChangesStayWithinTheLimit) {
  for (bool memory : {true, false}) {
    FileLogs f({}, memory);
    qint64 largest = 0;
    for (int i = 0; i < 100000; ++i) {
      f.line.SetWidth(float(i % 7 + 2) + (f.line.GetWidth() == float(i % 7 + 2) ? 0.5f : 0.0f));
      if (i % 3 == 0) f.stack.Undo(0); // undo, redo and new records mixed in
      if (i % 5 == 0) f.stack.Redo(0);
      largest = std::max({largest, f.stack.UndoStreamSize(), f.stack.RedoStreamSize()});
    }
    EXPECT_LE(f.stack.UndoCount(), 20);
    EXPECT_LT(largest, 20 * 200) << "memory " << memory; // 20 records of well under 200 bytes
  }
}
