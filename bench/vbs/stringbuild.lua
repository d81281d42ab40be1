-- Builds texts piece by piece: VBScript appends to the text, Lua collects and concatenates.
local rounds = tonumber(arg[1] or 20)

local function build(n)
  local parts = {}
  for i = 1, n do
    parts[#parts + 1] = "item " .. i .. ";"
  end
  return table.concat(parts)
end

local total = 0
for _ = 1, rounds do
  total = total + #build(40000)
end
print(total)
