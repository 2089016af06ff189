// The platform project file model: lines it does not manage survive every edit.
#include "tools/lang/project_file.h"

#include <gtest/gtest.h>

TEST(ProjectFile, KeepsForeignLinesAndEditsOnlyFileReferences) {
    klvr::ProjectFile file = klvr::ProjectFile::parse("// header\r\nname Demo\nsource a.klvr\nfile x.mm\ncustom setting = 1\nfile y.h");
    EXPECT_TRUE(file.hasFile("x.mm"));
    EXPECT_FALSE(file.hasFile("x.m"));  // whole references only, no prefixes
    EXPECT_FALSE(file.hasFile("a.klvr"));  // sources are not file references
    EXPECT_FALSE(file.addFile("x.mm"));
    EXPECT_TRUE(file.addFile("with blank.png"));
    EXPECT_TRUE(file.removeFile("x.mm"));
    EXPECT_FALSE(file.removeFile("x.mm"));
    EXPECT_EQ(file.text(), "// header\nname Demo\nsource a.klvr\ncustom setting = 1\nfile y.h\nfile with blank.png\n");
    EXPECT_EQ(klvr::ProjectFile::parse(file.text()).text(), file.text());
    EXPECT_TRUE(klvr::ProjectFile::parse("").files().empty());
}
