// How many requests to Wine's server something takes. Time here is what the machine makes of it; requests are exact.
//
// Wine's server writes a line a request to its log when it runs with -d, so the requests between two moments are the
// lines that the log has grown by. Logging takes time, so counting and timing are runs of their own, and the counting
// run leaves its figures in a file for the timing run. On Windows there is no such log and nothing is counted.
#pragma once

#include <fstream>
#include <map>
#include <optional>
#include <string>

class Requests
{
 public:
    using Table = std::map<std::string, double>;

    explicit Requests(const char* log) : log_(log, std::ios::binary) {}

    bool usable() const { return log_.is_open(); }

    // The requests that one of `count` takes, in all processes that this Wine server serves.
    template <typename Work>
    double each(int count, Work work)
    {
        skip();
        for (int i = 0; i < count; ++i)
            work();
        return static_cast<double>(countLines()) / count;
    }

    static void save(const char* file, const Table& table)
    {
        std::ofstream out(file);
        for (const auto& [name, requests] : table)
            out << requests << ' ' << name << '\n';
    }

    // Empty without the file.
    static Table load(const char* file)
    {
        Table table;
        std::ifstream in(file ? file : "");
        double requests = 0;
        std::string name;
        while (in >> requests && in.ignore() && std::getline(in, name))
            table[name] = requests;
        return table;
    }

    static std::optional<double> find(const Table& table, const std::string& name)
    {
        const auto entry = table.find(name);
        if (entry == table.end()) return std::nullopt;
        return entry->second;
    }

 private:
    void skip()
    {
        log_.clear();
        log_.seekg(0, std::ios::end);
    }

    // "0024: set_event( handle=0010, ..." is a request, "0024: set_event() = 0" what was answered.
    static bool isRequest(const std::string& line)
    {
        const std::size_t parenthesis = line.find('(');
        return line.find(": ") == 4 && line[6] != '*' && parenthesis != std::string::npos &&
               line.compare(parenthesis, 4, "() =") != 0;
    }

    int countLines()
    {
        // Whatever is not a whole line yet belongs to what came after.
        log_.clear();
        int requests = 0;
        for (std::string line; std::getline(log_, line);)
            requests += isRequest(line);
        return requests;
    }

    std::ifstream log_;
};
