<root>
	<node
		orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "point" }}
			diffuse={{ r: 1.000000, g: 0.000000, b: 0.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 0.000000, b: 0.000000 }}>
		</light>
	</node>
</root>

