#version 330

uniform mat4 world_view_proj;

in vec4 vertex;
in vec3 uv0;

out vec3 direction;

void main()
{
	gl_Position = world_view_proj * vertex;
	direction = uv0;
}
