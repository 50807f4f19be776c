// A new directory for the development store of each case.
#ifndef TESTS_SUPPORT_STORE_DIRECTORY_H
#define TESTS_SUPPORT_STORE_DIRECTORY_H

#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

// A process chooses its store's directory once: run each case in a process of its own.
class HostStore : public testing::Test
{
protected:
    HostStore()
    {
        std::string path = "/tmp/host-store-XXXXXX";
        if (mkdtemp(path.data()) == nullptr)
            throw std::filesystem::filesystem_error("mkdtemp", path, std::error_code());
        top_ = path;
        choose(top_ / "store");
    }
    ~HostStore() override { std::filesystem::remove_all(top_); }

    void choose(const std::filesystem::path &directory)
    {
        store_ = directory;
        setenv("CMIF_STORE", directory.c_str(), 1);
    }
    const std::filesystem::path &top() const { return top_; }
    const std::filesystem::path &store() const { return store_; }
    std::filesystem::path saved() const { return store_ / "saved.conf"; }
    std::filesystem::path database() const
    {
        for (const auto &entry : std::filesystem::directory_iterator(store_)) {
            if (entry.path().extension() == ".mdb")
                return entry.path();
        }
        return store_ / "none.mdb";
    }

    static std::string read(const std::filesystem::path &file)
    {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }
    static void write(const std::filesystem::path &file, const std::string &text)
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    static std::vector<std::string> open_descriptors()
    {
        std::vector<std::string> open;
        for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
            open.push_back(entry.path().filename());
        std::sort(open.begin(), open.end());
        return open;
    }

    static std::string get(const std::string &key) { return tarnNvramConfig_get(key.c_str()); }
    static int set(const std::string &key, const std::string &value)
    {
        return tarnNvramConfig_set(key.c_str(), value.c_str());
    }
    static std::map<std::string, std::string> all()
    {
        std::map<std::string, std::string> found;
        const auto add = [](const char *key, const char *value, void *context) {
            static_cast<std::map<std::string, std::string> *>(context)->emplace(key, value);
        };
        EXPECT_EQ(host_store_list(add, &found), 0);
        return found;
    }

private:
    std::filesystem::path top_, store_;
};

#endif
