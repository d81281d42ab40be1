#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/jet/RowSink.hpp"

namespace hearthmake::jet {

// What the reading process says: rows on their way through a pipe. Numbers are those of the machine, since
// both ends are one program; the reading end trusts nothing all the same.

class RowStreamWriter : public RowSink {
 public:
  using Write = std::function<void(std::string_view)>;

  explicit RowStreamWriter(Write write);

  void BeginTable(const std::string& name, const std::vector<std::string>& columns) override;
  void Row(const std::vector<Value>& values) override;
  void OtherTable(const std::string& name) override;
  // The last word, one of the two. Both send what has gathered.
  void End();
  void Fail(std::int32_t number, std::string_view description);

 private:
  void Put(const void* bytes, std::size_t size);
  void PutNumber(std::uint32_t number);
  void PutText(std::string_view text);
  void PutValue(const Value& value);
  void Send();

  Write m_write;
  std::string m_buffer;
};

class RowStreamReader {
 public:
  // Gives up to size bytes, 0 at the end.
  using Read = std::function<std::size_t(char* buffer, std::size_t size)>;

  // limit is how many bytes are taken at most.
  RowStreamReader(Read read, std::uint64_t limit) : m_read(std::move(read)), m_limit(limit) {}

  // Hands all that comes to the sink. False when the stream ends before its end; what the sink has taken is
  // then a part only.
  // Errors: those that the other end has sent; 3049 a stream that makes no sense or is longer than its limit.
  bool Run(RowSink& sink);

 private:
  bool TakeRecord(RowSink& sink, char kind);
  void TakeTable(RowSink& sink);
  void TakeRow(RowSink& sink);
  [[noreturn]] void TakeError();
  Value TakeValue();
  std::string TakeText(std::size_t longest);
  std::uint32_t TakeNumber();
  void Take(void* bytes, std::size_t size);
  bool Fill();

  Read m_read;
  std::uint64_t m_limit;
  std::uint64_t m_taken = 0;
  std::string m_buffer;
  std::size_t m_at = 0;
  std::size_t m_columns = 0;
  bool m_isInTable = false;
  std::vector<Value> m_row;
};

}  // namespace hearthmake::jet
