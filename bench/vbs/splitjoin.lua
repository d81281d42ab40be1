-- Takes lines apart, changes the fields and joins them again.
local rounds = tonumber(arg[1] or 20)

local function make_text(n)
  local lines = {}
  for i = 1, n do
    lines[i] = "name" .. i .. ",street " .. i % 100 .. ",town,country"
  end
  return table.concat(lines, "\n")
end

local function split(text, pattern)
  local parts = {}
  for part in text:gmatch(pattern) do
    parts[#parts + 1] = part
  end
  return parts
end

local function work(text)
  local lines = split(text, "[^\n]+")
  for i = 1, #lines do
    local fields = split(lines[i], "[^,]+")
    fields[2] = fields[2]:gsub("street", "road")
    fields[4] = fields[4]:upper()
    lines[i] = table.concat(fields, ";")
  end
  return table.concat(lines, "\r\n")
end

local text = make_text(10000)
local sum = 0
for _ = 1, rounds do
  sum = sum + #work(text)
end
print(sum)
